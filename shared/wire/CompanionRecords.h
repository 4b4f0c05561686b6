#pragma once

#include "shared/wire/Codec.h"

#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// A service that the user set up on the phone.
struct CompanionCustomApp {
    std::string id;
    std::string name;
    std::string endpoint;
    std::string token; ///< secret

    /// Whether the computer accepts it: the texts are short enough, and `normalizedAddress` accepts the
    /// trimmed address.
    [[nodiscard]] bool isAcceptable() const;

    bool operator==(const CompanionCustomApp&) const = default;
};

struct CompanionPlace {
    std::string name;
    std::string address;

    bool operator==(const CompanionPlace&) const = default;
};

/// The phone's settings that the computer follows.
struct CompanionPreferences {
    std::string language;
    std::string voice;
    std::optional<std::vector<CompanionPlace>> places; ///< no list is not the same as an empty one

    bool operator==(const CompanionPreferences&) const = default;
};

extern template struct Codec<CompanionCustomApp>;
extern template struct Codec<CompanionPlace>;
extern template struct Codec<CompanionPreferences>;
extern template struct Codec<std::vector<CompanionCustomApp>>;
extern template struct Codec<std::vector<CompanionPlace>>;

} // namespace morvex
