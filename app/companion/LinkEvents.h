#pragma once

#include "app/approvals/Schvalovani.h"
#include "app/companion/CompanionState.h"
#include "app/features/Feature.h"
#include "app/link/PhoneInbox.h"
#include "shared-apple/SecureLink.h"

#include <functional>
#include <memory>
#include <utility>
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
        const std::vector<Feature*>& features;
        std::function<Task<void>()> sendStatus;
        /// The relay knows this pairing no more.
        std::function<void()> forgetPeer;
    };

    explicit LinkEvents(Services services) : services_(std::move(services)) {}

    Task<void> zpracovat(std::shared_ptr<SecureLink> link, SecureLink::Udalost udalost);

  private:
    Task<void> handle(std::shared_ptr<SecureLink> link, SecureLink::Stav udalost);
    Task<void> handle(std::shared_ptr<SecureLink> link, SecureLink::Zprava udalost);
    Task<void> handle(std::shared_ptr<SecureLink> link, SecureLink::Chyba udalost);
    Task<void> handle(std::shared_ptr<SecureLink> link, SecureLink::Pripraveno udalost);

    Services services_;
};

} // namespace morvex
