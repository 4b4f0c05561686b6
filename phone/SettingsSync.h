#pragma once

#include "phone/Inbox.h"
#include "phone/Outbox.h"
#include "phone/PhoneSettings.h"
#include "phone/Terminal.h"
#include "shared/base/Error.h"

#include <set>
#include <string>
#include <vector>

namespace morvex {

/// Sends the Mac the preferences and apps that it may lack: at the start of each session and after a change.
/// A milestone sent after them shows when the Mac has got that far. Owned by the attendant; use on the
/// phone's executor.
class SettingsSync {
  public:
    SettingsSync(PhoneSettings& settings, Outbox& outbox, Terminal& terminal)
        : settings_(settings), outbox_(outbox), terminal_(terminal) {}

    Task<void> heard(const Inbox::Event& event);

    /// Sends the unconfirmed settings.
    Task<void> offer();

    /// Whether no offer is still in progress.
    [[nodiscard]] bool isSettled() const { return offered_.empty(); }

    /// Whether this message shows that the Mac has received the offers, and nothing else waits for it.
    [[nodiscard]] bool isMilestone(const SecureLink::Zprava& message) const;

  private:
    void tellTooLong(PhoneSettings::Kind kind);
    [[nodiscard]] Result<MacPayload> payloadOf(PhoneSettings::Kind kind) const;

    PhoneSettings& settings_;
    Outbox& outbox_;
    Terminal& terminal_;
    std::vector<PhoneSettings::Kind> offered_; ///< offered and not confirmed yet
    std::string milestone_;                    ///< sent after the latest offers
    std::set<PhoneSettings::Kind> tooLong_;    ///< too long for a frame; the user was told
};

} // namespace morvex
