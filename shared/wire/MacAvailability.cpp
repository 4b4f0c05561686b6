#include "shared/wire/MacAvailability.h"

#include "shared/base/Overloaded.h"

#include <algorithm>

namespace morvex {

std::string MacAvailability::popis(std::string_view deviceName, Date now) const {
    const std::string name{deviceName};
    return std::visit(
        Overloaded{
            [](const NeplatneParovani& state) { return "Párování neplatí — " + state.duvod; },
            [&](const Spanek& state) {
                const auto minutes = std::chrono::duration_cast<std::chrono::minutes>(now - state.od).count();
                return name + " spí (" + std::to_string(std::max<std::int64_t>(minutes, 1)) + " min)";
            },
            [](const Pripojuji& state) {
                return state.pokus < 2 ? "Připojuji…"
                                       : "Připojuji… (" + std::to_string(state.pokus) + ". pokus)";
            },
            [](const Preruseno& state) { return "Spojení přerušeno — " + state.duvod; },
            [](const Zaneprazdneny& state) { return "Pracuje: " + state.cim; },
            [](const Nesparovano&) -> std::string { return "Nespárováno"; },
            [&](const Offline&) { return name + " není připojený"; },
            [](const Pripraveny&) -> std::string { return "Připraven"; },
        },
        value);
}

bool MacAvailability::jePouzitelny() const {
    return as<Zaneprazdneny>() || as<Pripraveny>();
}

} // namespace morvex
