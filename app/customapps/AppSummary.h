#pragma once

#include "app/customapps/AppOutcome.h"

#include <cstddef>
#include <optional>
#include <string>

namespace morvex {

/// A custom app as a row in the view shows it.
struct AppSummary {
    std::string id;
    std::string name;
    std::string endpoint;
    bool enabled = true;
    bool comesFromIPhone = false;
    std::optional<AppOutcome> outcome = {}; ///< absent for an app that was not asked
    std::size_t news = 0;                   ///< tools that have changed or are new
    bool holdsChanges = false;              ///< such tools wait until a person has looked

    bool operator==(const AppSummary&) const = default;
};

} // namespace morvex
