#pragma once

#include "app/companion/StatusReport.h"
#include "app/companion/ToolGate.h"
#include "app/link/PhoneLink.h"

namespace morvex {

/// Tells the phone what this computer can do. Main thread; everything it refers to outlives it.
class StatusSync {
  public:
    StatusSync(StatusReport report, const ToolGate& gate, PhoneLink& phone, CompanionState& state,
               Clock& clock)
        : report_(std::move(report)), gate_(gate), phoneLink_(phone), state_(state), clock_(clock) {}

    /// Sends the current status. Does nothing without a link. If sending over the current link fails, the
    /// state shows the problem; a status that exceeds the frame limit is sent again in its shortened form.
    Task<void> poslatStav();

    /// The tool `mac.status`.
    Task<ToolOutcome> nastroj(NoArguments none, ToolCall call);

  private:
    StatusReport report_;
    const ToolGate& gate_;
    PhoneLink& phoneLink_;
    CompanionState& state_;
    Clock& clock_;
};

} // namespace morvex
