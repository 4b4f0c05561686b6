#pragma once

#include "shared/wire/Codec.h"

#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// A custom app as it is stored. Its token is in the keychain.
struct StoredApp {
    static constexpr const char* fromMac = "mac";
    static constexpr const char* fromIPhone = "iphone";

    std::string id;       ///< "mac-" and a UUID in lower case, or the phone's own
    std::string name;     ///< trimmed
    std::string endpoint; ///< as it was entered, trimmed; not the normalized address
    std::optional<bool> enabled;
    std::optional<std::string> source;

    /// A missing value counts as on.
    [[nodiscard]] bool isEnabled() const { return enabled.value_or(true); }

    /// Any app that was not added on this computer counts as the phone's.
    [[nodiscard]] bool isFromMac() const { return source == fromMac; }

    bool operator==(const StoredApp&) const = default;
};

extern template struct Codec<StoredApp>;
extern template struct Codec<std::vector<StoredApp>>;

} // namespace morvex
