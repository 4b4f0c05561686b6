#pragma once

#include "app/companion/PhoneLink.h"
#include "app/companion/Schvalovani.h"
#include "app/companion/ToolGate.h"
#include "shared/wire/MacPayload.h"

#include <memory>
#include <string>

namespace morvex {

/// What becomes of each message of the phone. Main thread; the listener awaits each message to its end, so
/// that calls of the phone run one at a time and a decision that arrives meanwhile stays unread.
class PhoneInbox {
  public:
    PhoneInbox(ToolGate& nastroje, Schvalovani& schvalovani, PhoneLink& spojeni)
        : nastroje_(nastroje), schvalovani_(schvalovani), spojeni_(spojeni) {}

    Task<void> zpracovatZpravu(MacPayload payload, std::string requestID);

  private:
    Task<void> handle(MacPayload::ToolCall call, std::string requestID);
    Task<void> handle(MacPayload::ApprovalDecision decision, std::string requestID);
    Task<void> ignore();
    /// A lost reply stays lost: the work is done and stands.
    Task<void> poslatVysledek(std::shared_ptr<SecureLink> link, ToolOutcome outcome, std::string requestID);

    ToolGate& nastroje_;
    Schvalovani& schvalovani_;
    PhoneLink& spojeni_;
};

} // namespace morvex
