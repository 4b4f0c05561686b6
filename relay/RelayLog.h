#pragma once

#include "shared/wire/Identifiers.h"

#include <functional>
#include <string>
#include <string_view>

namespace morvex {

/// Receives one line per event, without a line break. From any thread. Lines contain no token, key or
/// content.
using RelayLog = std::function<void(std::string_view line)>;

/// Shortens a checked identifier; enough to tell devices apart in the log.
inline std::string shortened(std::string_view identifier) {
    return std::string{identifier.substr(0, 6)};
}

inline std::string shortened(const PairID& pair, const DeviceID& device) {
    return "device " + shortened(device.rawValue) + " of pair " + shortened(pair.rawValue);
}

} // namespace morvex
