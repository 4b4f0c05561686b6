#pragma once

#include "platform/linux/evolution/EvolutionService.h"
#include "platform/ports/ContactStore.h"

namespace morvex {

/// The address books of the desktop, by its service. Lists of contacts are left out.
class EvolutionContactStore final : public EvolutionStore<ContactStore> {
  public:
    using EvolutionStore::EvolutionStore;

    Task<Result<std::vector<Contact>>> named(std::string name, std::size_t limit,
                                             std::stop_token stop) override;
};

} // namespace morvex
