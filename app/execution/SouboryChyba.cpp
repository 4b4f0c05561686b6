#include "app/execution/SouboryChyba.h"

#include "foundation/Text.h"
#include "shared/base/InCzechAlone.h"
#include "shared/wire/TalkSpanError.h"

namespace morvex {

namespace {

struct Popis {
    Sentence operator()(const SouboryChyba::MimoPovolene& chyba) const {
        return TalkSpanError{TalkSpanError::OutsideAllowedFolders{chyba.name}}.popis();
    }

    Sentence operator()(const SouboryChyba::ZakazanaCesta& chyba) const {
        return inCzechAlone("Na " + chyba.fragment +
                            " nesahám za žádných okolností — jsou to přihlašovací údaje.");
    }

    Sentence operator()(const SouboryChyba::NeniSoubor& chyba) const {
        return inCzechAlone(chyba.name + " není soubor.");
    }

    Sentence operator()(const SouboryChyba::PrilisVelky& chyba) const {
        return inCzechAlone("Soubor " + chyba.name + " má přes " + std::to_string(chyba.limit) +
                            " kB. Na čtení hlasem je to moc; řekni, co v něm hledat.");
    }

    Sentence operator()(const SouboryChyba::UzExistuje& chyba) const {
        return inCzechAlone("Soubor " + chyba.name +
                            " už existuje. Přepsání musíš potvrdit — to zatím neumím.");
    }

    Sentence operator()(const SouboryChyba::WouldStartProgram& chyba) const {
        return inCzechAlone("Soubor " + chyba.name + " by mohl sám spustit program. Takový nezapisuju.");
    }

    Sentence operator()(const SouboryChyba::TooMuchWritten&) const {
        return inCzechAlone(
            "Za poslední hodinu už bylo zapsáno tolik, kolik smí, tedy 1 GB. Zkus to později.");
    }

    Sentence operator()(const SouboryChyba::Selhalo& chyba) const { return inCzechAlone(chyba.text); }
};

} // namespace

Sentence SouboryChyba::popis() const {
    return std::visit(Popis{}, kind);
}

SouboryChyba SouboryChyba::noFolder(std::string_view prompt, const std::vector<std::string>& aliasy) {
    if (aliasy.empty()) return {Selhalo{"Na Macu není povolená žádná složka."}};
    return {Selhalo{std::string(prompt) + " Povolené: " + join(aliasy, ", ") + "."}};
}

} // namespace morvex
