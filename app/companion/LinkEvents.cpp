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

Task<void> LinkEvents::zpracovat(std::shared_ptr<SecureLink> link, SecureLink::Udalost udalost) {
    return std::visit([&](auto& held) { return handle(std::move(link), std::move(held)); }, udalost);
}

Task<void> LinkEvents::handle(std::shared_ptr<SecureLink>, SecureLink::Stav udalost) {
    auto& state = services_.state;
    const auto* pripojuji = udalost.stav.as<MacAvailability::Pripojuji>();
    const bool ceka = pripojuji && pripojuji->dalsiZa > 0;
    state.dalsiPokus = ceka ? std::optional(services_.clock.sinceBoot() + wait(*pripojuji)) : std::nullopt;
    state.dostupnost = udalost.stav;
    if (auto* preruseno = udalost.stav.as<MacAvailability::Preruseno>()) state.potiz = preruseno->duvod;
    if (!udalost.stav.jePouzitelny()) services_.schvalovani.vyresit(false);
    if (udalost.stav.as<MacAvailability::NeplatneParovani>()) services_.forgetPeer();
    co_return;
}

Task<void> LinkEvents::handle(std::shared_ptr<SecureLink> link, SecureLink::Zprava udalost) {
    return services_.inbox.zpracovatZpravu(std::move(udalost.payload),
                                           {std::move(link), std::move(udalost.requestID)});
}

Task<void> LinkEvents::handle(std::shared_ptr<SecureLink>, SecureLink::Chyba udalost) {
    services_.state.potiz = std::move(udalost.text);
    co_return;
}

Task<void> LinkEvents::handle(std::shared_ptr<SecureLink> link, SecureLink::Pripraveno) {
    services_.state.potiz = std::nullopt;
    services_.state.telefonOdesel = false;
    co_await services_.sendStatus();
    for (auto* feature : services_.features) co_await feature->catchUp(link);
}

} // namespace morvex
