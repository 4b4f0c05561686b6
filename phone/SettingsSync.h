#pragma once

#include "phone/Inbox.h"
#include "phone/PhoneSession.h"
#include "phone/PhoneSettings.h"
#include "phone/Terminal.h"

namespace morvex {

/// Gives a new Mac the preferences and apps that this phone has set before: at the beginning of each session
/// until a result of a tool shows that the Mac has got so far. Owned by the attendant; lives on the phone's
/// executor.
class SettingsSync {
  public:
    SettingsSync(PhoneSettings& settings, PhoneSession& session, Terminal& terminal)
        : settings_(settings), session_(session), terminal_(terminal) {}

    Task<void> heard(const Inbox::Event& event);

  private:
    Task<void> offer();
    void confirm();

    PhoneSettings& settings_;
    PhoneSession& session_;
    Terminal& terminal_;
    bool isOffered_ = false; ///< in this session
};

} // namespace morvex
