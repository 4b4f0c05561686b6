#include "app/link/PhoneInbox.h"

namespace morvex {

namespace {

Task<void> ignore() {
    co_return;
}

} // namespace

Task<void> PhoneInbox::zpracovatZpravu(MacPayload payload, Delivery delivery) {
    const auto& handler = handlers_[payload.value.index()];
    return handler ? handler(std::move(payload), std::move(delivery)) : ignore();
}

Task<PhoneInbox::SettingsTurn> PhoneInbox::settingsTurn() {
    const auto abandoned = abandonment();
    auto turn = co_await settings_.take();
    if (abandoned.stop_requested()) co_return std::nullopt;
    co_return SettingsTurn(std::move(turn));
}

} // namespace morvex
