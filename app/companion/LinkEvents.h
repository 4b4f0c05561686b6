#pragma once

#include "app/approvals/Schvalovani.h"
#include "app/companion/CompanionState.h"
#include "app/features/Feature.h"
#include "app/link/PhoneInbox.h"
#include "app/link/PhoneLink.h"

#include <functional>
#include <memory>
#include <vector>

namespace morvex {

/// What becomes of each event of the link to the phone. Main thread; all of what it refers to outlives it.
class LinkEvents {
  public:
    struct Services {
        CompanionState& state;
        const Clock& clock;
        Schvalovani& schvalovani;
        PhoneInbox& inbox;
        PhoneLink& phone;
        const std::vector<Feature*>& features;
        std::function<Task<void>()> sendStatus;
        /// The relay knows this pairing no more.
        std::function<Task<void>()> forgetPeer;
    };

    explicit LinkEvents(Services services) : services_(std::move(services)) {}

    Task<void> zpracovat(SecureLink::Udalost udalost);

  private:
    Task<void> handle(SecureLink::Stav udalost);
    Task<void> handle(SecureLink::Zprava udalost);
    Task<void> handle(SecureLink::Chyba udalost);
    Task<void> handle(SecureLink::Pripraveno udalost);

    Services services_;
};

} // namespace morvex
