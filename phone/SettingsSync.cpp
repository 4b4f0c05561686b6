#include "phone/SettingsSync.h"

#include "shared-apple/MessageTooLong.h"
#include "shared/base/Try.h"

#include <utility>

namespace morvex {

using Kind = PhoneSettings::Kind;

Task<void> SettingsSync::heard(const Inbox::Event& event) {
    if (const auto* told = std::get_if<SecureLink::Stav>(&event))
        if (told->stav.as<MacAvailability::Pripraveny>()) co_return co_await offer();
    const auto* message = std::get_if<SecureLink::Zprava>(&event);
    if (!message || !isMilestone(*message)) co_return;
    for (auto kind : std::exchange(offered_, {})) settings_.confirm(kind);
}

Task<void> SettingsSync::offer() {
    offered_.clear();
    for (auto kind : PhoneSettings::kinds) {
        if (settings_.isConfirmed(kind)) continue;
        auto payload = payloadOf(kind);
        if (!payload) {
            terminal_.problem(payload.error().popis());
            continue;
        }
        auto sent =
            co_await outbox_.trySend(*std::move(payload), kind == Kind::apps ? "custom-apps" : "preferences");
        if (!sent && sent.error().as<MessageTooLong>())
            tellTooLong(kind);
        else
            offered_.push_back(kind);
    }
    if (!offered_.empty()) milestone_ = co_await outbox_.sendMilestone();
}

void SettingsSync::tellTooLong(PhoneSettings::Kind kind) {
    if (!tooLong_.insert(kind).second) return;
    terminal_.problem(kind == Kind::apps ? "Seznam aplikací je na přenos příliš dlouhý. Zůstane jen tady."
                                         : "Předvolby jsou na přenos příliš dlouhé. Zůstanou jen tady.");
}

bool SettingsSync::isMilestone(const SecureLink::Zprava& message) const {
    return message.payload.as<MacPayload::ToolResult>() && !offered_.empty() && !milestone_.empty() &&
           message.requestID == milestone_;
}

Result<MacPayload> SettingsSync::payloadOf(Kind kind) const {
    if (kind == Kind::apps) {
        TRY(auto, apps, settings_.apps());
        return MacPayload{MacPayload::CustomApps{std::move(apps)}};
    }
    TRY(auto, preferences, settings_.preferences());
    return MacPayload{MacPayload::Preferences{std::move(preferences)}};
}

} // namespace morvex
