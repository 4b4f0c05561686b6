#pragma once

#include "shared/base/Date.h"
#include "shared/base/Uuid.h"

#include <optional>
#include <string>

namespace morvex {

/// The task that an agent works on right now.
struct Bezici {
    std::string requestID;
    std::optional<Uuid> workItemID;
    std::string nastroj; ///< the agent's id
    Date zacatek;
    std::optional<std::string> prubeh; ///< the latest progress

    bool operator==(const Bezici&) const = default;
};

} // namespace morvex
