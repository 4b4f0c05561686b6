#pragma once

#include <compare>
#include <functional>
#include <ostream>
#include <string>

namespace morvex {

/// A device, identified by the fingerprint of its signing key, so that nobody can choose the identifier.
struct DeviceID {
    std::string rawValue;

    auto operator<=>(const DeviceID&) const = default;

    friend std::ostream& operator<<(std::ostream& out, const DeviceID& id) { return out << id.rawValue; }
};

/// The identifier of a pair of devices, assigned by the relay.
struct PairID {
    std::string rawValue;

    auto operator<=>(const PairID&) const = default;

    friend std::ostream& operator<<(std::ostream& out, const PairID& id) { return out << id.rawValue; }
};

} // namespace morvex

template <> struct std::hash<morvex::DeviceID> {
    std::size_t operator()(const morvex::DeviceID& id) const noexcept {
        return std::hash<std::string>{}(id.rawValue);
    }
};

template <> struct std::hash<morvex::PairID> {
    std::size_t operator()(const morvex::PairID& id) const noexcept {
        return std::hash<std::string>{}(id.rawValue);
    }
};
