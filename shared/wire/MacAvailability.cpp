#include "shared/wire/MacAvailability.h"

#include "shared/base/Overloaded.h"

#include <algorithm>

namespace morvex {

Sentence MacAvailability::popis(DeviceRole protejsek, Date now) const {
    const bool isPhone = protejsek == DeviceRole::phone;
    return std::visit(
        Overloaded{
            [](const NeplatneParovani& state) { return "Párování neplatí — {duvod}"_sentence(state.duvod); },
            [&](const Spanek& state) {
                const auto since = std::chrono::duration_cast<std::chrono::minutes>(now - state.od).count();
                const auto minut = std::max<std::int64_t>(since, 1);
                return isPhone ? "Telefon spí ({minut} min)"_sentence(minut)
                               : "Mac spí ({minut} min)"_sentence(minut);
            },
            [](const Pripojuji& state) {
                return state.pokus < 2 ? Sentence("Připojuji…"_sentence)
                                       : "Připojuji… ({cislo}. pokus)"_sentence(state.pokus);
            },
            [](const Preruseno& state) { return "Spojení přerušeno — {duvod}"_sentence(state.duvod); },
            [](const Zaneprazdneny& state) { return "Pracuje: {cim}"_sentence(state.cim); },
            [](const Nesparovano&) -> Sentence { return "Nespárováno"_sentence; },
            [&](const Offline&) -> Sentence {
                if (isPhone) return "Telefon není připojený"_sentence;
                return "Mac není připojený"_sentence;
            },
            [](const Pripraveny&) -> Sentence { return "Připraven"_sentence; },
        },
        value);
}

bool MacAvailability::jePouzitelny() const {
    return as<Zaneprazdneny>() || as<Pripraveny>();
}

} // namespace morvex
