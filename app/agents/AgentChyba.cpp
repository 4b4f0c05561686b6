#include "app/agents/AgentChyba.h"

namespace morvex {

namespace {

struct Popis {
    Sentence operator()(const AgentChyba::Zaneprazdneno& chyba) const {
        return "Už běží jiný úkol: {nastroj}. Počkej, nebo ho zruš."_sentence(chyba.nastroj);
    }

    Sentence operator()(const AgentChyba::NeznamyNastroj& chyba) const {
        return "Nástroj {nastroj} neznám."_sentence(chyba.nastroj);
    }

    Sentence operator()(const AgentChyba::Nenainstalovano& chyba) const { return chyba.zprava; }

    Sentence operator()(const AgentChyba::SlozkaNeexistuje& chyba) const {
        return "Složka {cesta} neexistuje."_sentence(chyba.cesta);
    }

    Sentence operator()(const AgentChyba::FolderNoLongerAllowed& chyba) const {
        return "Složka {cesta} už není povolená."_sentence(chyba.cesta);
    }

    Sentence operator()(const AgentChyba::PrazdnaInstrukce&) const { return "Prázdné zadání."_sentence; }
};

} // namespace

Sentence AgentChyba::popis() const {
    return std::visit(Popis{}, kind);
}

} // namespace morvex
