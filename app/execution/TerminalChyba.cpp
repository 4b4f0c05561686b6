#include "app/execution/TerminalChyba.h"

#include "shared/base/InCzechAlone.h"

namespace morvex {

namespace {

struct Popis {
    Sentence operator()(const TerminalChyba::ZakazanyProgram& chyba) const {
        return inCzechAlone("Program " + chyba.jmeno +
                            " spustit neumím. Povolené jsou jen ty, které nic nemění.");
    }

    Sentence operator()(const TerminalChyba::VyzadujePotvrzeni& chyba) const {
        return inCzechAlone(chyba.command +
                            " vyžaduje tvoje potvrzení. Schvalování zatím neumím — udělej to na Macu sám.");
    }

    Sentence operator()(const TerminalChyba::MimoPovolene& chyba) const {
        return inCzechAlone("Pracovní složka " + chyba.slozka + " není mezi povolenými.");
    }

    Sentence operator()(const TerminalChyba::PodezreleArgumenty& chyba) const {
        return inCzechAlone("Ten příkaz nespustím: " + chyba.duvod);
    }
};

} // namespace

Sentence TerminalChyba::popis() const {
    return std::visit(Popis{}, kind);
}

} // namespace morvex
