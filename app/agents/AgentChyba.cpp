#include "app/agents/AgentChyba.h"

namespace morvex {

namespace {

struct Popis {
    std::string operator()(const AgentChyba::Zaneprazdneno& chyba) const {
        return "Už běží jiný úkol: " + chyba.nastroj + ". Počkej, nebo ho zruš.";
    }

    std::string operator()(const AgentChyba::NeznamyNastroj& chyba) const {
        return "Nástroj " + chyba.nastroj + " neznám.";
    }

    std::string operator()(const AgentChyba::Nenainstalovano& chyba) const { return chyba.zprava; }

    std::string operator()(const AgentChyba::SlozkaNeexistuje& chyba) const {
        return "Složka " + chyba.cesta + " neexistuje.";
    }

    std::string operator()(const AgentChyba::SlozkaUzNeniPovolena& chyba) const {
        return "Složka " + chyba.cesta + " už není povolená.";
    }

    std::string operator()(const AgentChyba::PrazdnaInstrukce&) const { return "Prázdné zadání."; }
};

} // namespace

std::string AgentChyba::popis() const {
    return std::visit(Popis{}, pripad);
}

} // namespace morvex
