#include "app/execution/TerminalChyba.h"

namespace morvex {

namespace {

struct Popis {
    std::string operator()(const TerminalChyba::ZakazanyProgram& chyba) const {
        return "Program " + chyba.jmeno + " spustit neumím. Povolené jsou jen ty, které nic nemění.";
    }

    std::string operator()(const TerminalChyba::VyzadujePotvrzeni& chyba) const {
        return chyba.prikaz + " vyžaduje tvoje potvrzení. Schvalování zatím neumím — udělej to na Macu sám.";
    }

    std::string operator()(const TerminalChyba::MimoPovolene& chyba) const {
        return "Pracovní složka " + chyba.slozka + " není mezi povolenými.";
    }

    std::string operator()(const TerminalChyba::PodezreleArgumenty& chyba) const {
        return "Ten příkaz nespustím: " + chyba.duvod;
    }
};

} // namespace

std::string TerminalChyba::popis() const {
    return std::visit(Popis{}, pripad);
}

} // namespace morvex
