#pragma once

#include <string>

namespace morvex {

/// A custom app as a row in the view shows it.
struct AppSummary {
    std::string id;
    std::string name;
    std::string endpoint;
    bool enabled = true;
    bool comesFromIPhone = false;

    bool operator==(const AppSummary&) const = default;
};

} // namespace morvex
