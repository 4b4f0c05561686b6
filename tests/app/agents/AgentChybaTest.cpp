#include "app/agents/AgentChyba.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(AgentChyba, HasASentenceForEachCase) {
    using Chyba = AgentChyba;
    EXPECT_EQ(Chyba{Chyba::Zaneprazdneno{"codex"}}.popis().czech(),
              "Už běží jiný úkol: codex. Počkej, nebo ho zruš.");
    EXPECT_EQ(Chyba{Chyba::NeznamyNastroj{"vim"}}.popis().czech(), "Nástroj vim neznám.");
    EXPECT_EQ(Chyba{Chyba::Nenainstalovano{Sentence("Jak to je.")}}.popis().czech(), "Jak to je.");
    EXPECT_EQ(Chyba{Chyba::SlozkaNeexistuje{"/a"}}.popis().czech(), "Složka /a neexistuje.");
    EXPECT_EQ(Chyba{Chyba::FolderNoLongerAllowed{"/a"}}.popis().czech(), "Složka /a už není povolená.");
    EXPECT_EQ(Chyba{Chyba::PrazdnaInstrukce{}}.popis().czech(), "Prázdné zadání.");
}

} // namespace
} // namespace morvex
