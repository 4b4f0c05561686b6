#include "app/agents/AgentChyba.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(AgentChyba, HasASentenceForEachCase) {
    using Chyba = AgentChyba;
    EXPECT_EQ(Chyba{Chyba::Zaneprazdneno{"codex"}}.popis(),
              "Už běží jiný úkol: codex. Počkej, nebo ho zruš.");
    EXPECT_EQ(Chyba{Chyba::NeznamyNastroj{"vim"}}.popis(), "Nástroj vim neznám.");
    EXPECT_EQ(Chyba{Chyba::Nenainstalovano{"Jak to je."}}.popis(), "Jak to je.");
    EXPECT_EQ(Chyba{Chyba::SlozkaNeexistuje{"/a"}}.popis(), "Složka /a neexistuje.");
    EXPECT_EQ(Chyba{Chyba::SlozkaUzNeniPovolena{"/a"}}.popis(), "Složka /a už není povolená.");
    EXPECT_EQ(Chyba{Chyba::PrazdnaInstrukce{}}.popis(), "Prázdné zadání.");
}

} // namespace
} // namespace morvex
