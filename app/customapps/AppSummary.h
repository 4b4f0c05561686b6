#pragma once

#include "app/customapps/AppOutcome.h"
#include "app/customapps/SeenTools.h"

#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// A custom app as a row in the view shows it.
struct AppSummary {
    std::string id;
    std::string name;
    std::string endpoint;
    bool enabled = true;
    bool comesFromIPhone = false;
    std::optional<AppOutcome> outcome = {}; ///< absent for an app that was not asked
    std::vector<SeenTool> news = {};        ///< tools that have changed or are new
    bool holdsChanges = false;              ///< such tools wait until a person has looked

    bool operator==(const AppSummary&) const = default;
};

} // namespace morvex
