#pragma once

#include "shared/wire/Codec.h"

#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// A custom app as it is kept. Its token is not in here but in the keychain.
struct StoredApp {
    static constexpr const char* fromMac = "mac";
    static constexpr const char* fromIPhone = "iphone";

    std::string id;       ///< "mac-" and a UUID in lower case, or the phone's own
    std::string name;     ///< trimmed
    std::string endpoint; ///< as it was given, trimmed; not the normalized address
    std::optional<bool> enabled;
    std::optional<std::string> source;

    /// Absent counts as on.
    [[nodiscard]] bool isEnabled() const { return enabled.value_or(true); }

    /// Whatever was not added here counts as the phone's.
    [[nodiscard]] bool isFromMac() const { return source == fromMac; }

    bool operator==(const StoredApp&) const = default;
};

extern template struct Codec<StoredApp>;
extern template struct Codec<std::vector<StoredApp>>;

} // namespace morvex
