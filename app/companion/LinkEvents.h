#pragma once

#include "app/approvals/Schvalovani.h"
#include "app/companion/CompanionState.h"
#include "app/features/Feature.h"
#include "shared-apple/SecureLink.h"

#include <functional>
#include <memory>
#include <utility>
#include <vector>

namespace morvex {

/// What becomes of what the link to the phone tells of itself. Main thread; all of what it refers to outlives
/// it.
class LinkEvents {
  public:
    struct Services {
        CompanionState& state;
        const Clock& clock;
        Schvalovani& schvalovani;
        const std::vector<Feature*>& features;
        std::function<Task<void>()> poslatStav;
        /// Called when the relay no longer knows this pairing.
        std::function<void()> forgetPeer;
    };

    explicit LinkEvents(Services services) : services_(std::move(services)) {}

    Task<void> handle(std::shared_ptr<SecureLink> link, SecureLink::Udalost udalost);

  private:
    void dostupnost(const MacAvailability& stav);

    Services services_;
};

} // namespace morvex
