#include "app/ui/AvailabilitySymbol.h"

#include "shared/base/Overloaded.h"

namespace morvex {

AvailabilitySymbol availabilitySymbol(const MacAvailability& availability) {
    using Symbol = AvailabilitySymbol;
    return std::visit(Overloaded{
                          [](const MacAvailability::Pripraveny&) { return Symbol::ready; },
                          [](const MacAvailability::Zaneprazdneny&) { return Symbol::busy; },
                          [](const MacAvailability::Pripojuji&) { return Symbol::connecting; },
                          [](const MacAvailability::Spanek&) { return Symbol::away; },
                          [](const MacAvailability::Preruseno&) { return Symbol::away; },
                          [](const MacAvailability::Offline&) { return Symbol::away; },
                          [](const MacAvailability::NeplatneParovani&) { return Symbol::attention; },
                          [](const MacAvailability::Nesparovano&) { return Symbol::attention; },
                      },
                      availability.value);
}

QString pictureName(AvailabilitySymbol symbol) {
    switch (symbol) {
    case AvailabilitySymbol::ready:
        return QStringLiteral("ready");
    case AvailabilitySymbol::busy:
        return QStringLiteral("busy");
    case AvailabilitySymbol::connecting:
        return QStringLiteral("connecting");
    case AvailabilitySymbol::away:
        return QStringLiteral("away");
    case AvailabilitySymbol::attention:
        return QStringLiteral("attention");
    }
    return {};
}

} // namespace morvex
