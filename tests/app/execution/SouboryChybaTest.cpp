#include "app/execution/SouboryBridge.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

using Chyba = SouboryBridge::Chyba;

TEST(SouboryChyba, EveryCaseHasItsSentence) {
    struct Case {
        Chyba chyba;
        const char* popis;
    };

    for (const auto& [chyba, popis] : {
             Case{{Chyba::MimoPovolene{"hosts"}}, "Cesta hosts leží mimo povolené složky. Nesahám na ni."},
             Case{{Chyba::ZakazanaCesta{"/.ssh"}},
                  "Na /.ssh nesahám za žádných okolností — jsou to přihlašovací údaje."},
             Case{{Chyba::NeniSoubor{"a"}}, "a není soubor."},
             Case{{Chyba::PrilisVelky{"a", 256}},
                  "Soubor a má přes 256 kB. Na čtení hlasem je to moc; řekni, co v něm hledat."},
             Case{{Chyba::UzExistuje{"a"}},
                  "Soubor a už existuje. Přepsání musíš potvrdit — to zatím neumím."},
             Case{{Chyba::WouldStartProgram{".git"}},
                  "Soubor .git by mohl sám spustit program. Takový nezapisuju."},
             Case{{Chyba::TooMuchWritten{}},
                  "Za poslední hodinu už bylo zapsáno tolik, kolik smí, tedy 1 GB. Zkus to později."},
             Case{{Chyba::Selhalo{"Text."}}, "Text."},
         })
        EXPECT_EQ(chyba.popis().czech(), popis);
}

TEST(SouboryChyba, AMissingFolderNamesTheAllowedOnesOrSaysThatThereIsNone) {
    EXPECT_EQ(Chyba::noFolder("Vyber.", {"a", "b"}).popis().czech(), "Vyber. Povolené: a, b.");
    EXPECT_EQ(Chyba::noFolder("Vyber.", {}).popis().czech(), "Na Macu není povolená žádná složka.");
}

} // namespace
} // namespace morvex
