#include "app/companion/LinkEvents.h"

#include <chrono>
#include <optional>
#include <utility>
#include <variant>

namespace morvex {

namespace {

Clock::Duration wait(const MacAvailability::Pripojuji& pripojuji) {
    return std::chrono::duration_cast<Clock::Duration>(std::chrono::duration<double>(pripojuji.dalsiZa));
}

} // namespace

Task<void> LinkEvents::handle(std::shared_ptr<SecureLink> link, SecureLink::Udalost udalost) {
    if (const auto* told = std::get_if<SecureLink::Stav>(&udalost)) co_return dostupnost(told->stav);
    if (auto* told = std::get_if<SecureLink::Chyba>(&udalost)) services_.state.potiz = std::move(told->text);
    if (!std::holds_alternative<SecureLink::Pripraveno>(udalost)) co_return;
    services_.state.potiz = std::nullopt;
    services_.state.phoneHasLeft = false;
    co_await services_.poslatStav();
    for (auto* feature : services_.features) co_await feature->catchUp(link);
}

void LinkEvents::dostupnost(const MacAvailability& stav) {
    auto& state = services_.state;
    const auto* pripojuji = stav.as<MacAvailability::Pripojuji>();
    const bool isWaiting = pripojuji && pripojuji->dalsiZa > 0;
    state.nextAttempt =
        isWaiting ? std::optional(services_.clock.sinceBoot() + wait(*pripojuji)) : std::nullopt;
    state.dostupnost = stav;
    if (auto* preruseno = stav.as<MacAvailability::Preruseno>()) state.potiz = preruseno->duvod;
    if (!stav.jePouzitelny()) services_.schvalovani.vyresit(false);
    if (stav.as<MacAvailability::NeplatneParovani>()) services_.forgetPeer();
}

} // namespace morvex
