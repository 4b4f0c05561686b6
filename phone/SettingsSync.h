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

/// Gives the Mac the preferences and apps that it may not have: at the beginning of each session, and after a
/// change, until a milestone behind them shows that the Mac has got so far. Owned by the attendant; lives on
/// the phone's executor.
class SettingsSync {
  public:
    SettingsSync(PhoneSettings& settings, Outbox& outbox, Terminal& terminal)
        : settings_(settings), outbox_(outbox), terminal_(terminal) {}

    Task<void> heard(const Inbox::Event& event);

    /// Sends what is unconfirmed.
    Task<void> offer();

    /// Nothing that was offered is still on its way.
    [[nodiscard]] bool isSettled() const { return offered_.empty(); }

    /// Whether this shows that the Mac has what was offered, and is waited for by nobody else.
    [[nodiscard]] bool isMilestone(const SecureLink::Zprava& message) const;

  private:
    void tellTooLong(PhoneSettings::Kind kind);
    [[nodiscard]] Result<MacPayload> payloadOf(PhoneSettings::Kind kind) const;

    PhoneSettings& settings_;
    Outbox& outbox_;
    Terminal& terminal_;
    std::vector<PhoneSettings::Kind> offered_; ///< and not confirmed yet
    std::string milestone_;                    ///< behind what was offered last
    std::set<PhoneSettings::Kind> tooLong_;    ///< what no frame can take, which was told
};

} // namespace morvex
