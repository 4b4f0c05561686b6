#pragma once

#include "shared/wire/Identifiers.h"

#include <functional>
#include <string>
#include <string_view>

namespace morvex {

/// Takes one line an event, without its end. From any thread. Lines name no token, key or content.
using RelayLog = std::function<void(std::string_view line)>;

/// Enough of a checked identifier to tell devices apart in the log.
inline std::string shortened(std::string_view identifier) {
    return std::string{identifier.substr(0, 6)};
}

inline std::string shortened(const PairID& pair, const DeviceID& device) {
    return "device " + shortened(device.rawValue) + " of pair " + shortened(pair.rawValue);
}

} // namespace morvex
