#include "phone/SettingsSync.h"

#include <utility>

namespace morvex {

Task<void> SettingsSync::heard(const Inbox::Event& event) {
    if (const auto* told = std::get_if<SecureLink::Stav>(&event))
        if (told->stav.as<MacAvailability::Pripraveny>()) co_await offer();
    if (const auto* message = std::get_if<SecureLink::Zprava>(&event))
        if (message->payload.as<MacPayload::ToolResult>()) confirm();
}

Task<void> SettingsSync::offer() {
    isOffered_ = settings_.isUnconfirmed();
    if (!isOffered_) co_return;
    auto preferences = settings_.preferences();
    auto apps = settings_.apps();
    if (!preferences) terminal_.problem(preferences.error().popis());
    if (!apps) terminal_.problem(apps.error().popis());
    if (preferences && *preferences != CompanionPreferences{})
        co_await session_.trySend({MacPayload::Preferences{*std::move(preferences)}}, "preferences");
    if (apps && !apps->empty())
        co_await session_.trySend({MacPayload::CustomApps{*std::move(apps)}}, "custom-apps");
}

void SettingsSync::confirm() {
    if (std::exchange(isOffered_, false)) settings_.confirm();
}

} // namespace morvex
