#pragma once

#include "app/companion/ToolGate.h"
#include "app/features/Feature.h"
#include "app/link/PhoneInbox.h"
#include "app/link/PhoneLink.h"

#include <memory>
#include <string>
#include <vector>

namespace morvex {

/// Carries out the calls of the phone. Main thread; everything it refers to outlives it.
class PhoneCalls {
  public:
    PhoneCalls(ToolGate& gate, PhoneLink& phone, const PhoneInbox& inbox,
               const std::vector<Feature*>& features)
        : gate_(gate), phoneLink_(phone), inbox_(inbox), features_(features) {}

    /// Runs the tool and sends what it answers over the link by which the call came. A lost reply stays lost:
    /// the work is done and stands.
    Task<void> handle(MacPayload::ToolCall call, Delivery delivery);

  private:
    ToolGate& gate_;
    PhoneLink& phoneLink_;
    const PhoneInbox& inbox_;
    const std::vector<Feature*>& features_;
};

} // namespace morvex
