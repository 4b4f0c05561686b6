#pragma once

#include "foundation/Task.h"
#include "shared/base/Error.h"

#include <optional>
#include <stop_token>
#include <string>

namespace morvex {

struct FoundPlace {
    std::string name;     ///< may be empty
    double latitude = 0;  ///< degrees north of the equator, -90 to 90
    double longitude = 0; ///< degrees east of Greenwich, -180 to 180

    bool operator==(const FoundPlace&) const = default;
};

/// Finds a place by its name or address, as a person would say it.
class PlaceSearch {
  public:
    virtual ~PlaceSearch() = default;

    /// The best match, or nothing. Fails when `stop` is requested, too.
    virtual Task<Result<std::optional<FoundPlace>>> find(std::string text, std::stop_token stop) = 0;
};

} // namespace morvex
