#pragma once

#include <cstdlib>
#include <string_view>

namespace morvex {

/// Whether the environment names a session bus. Without an address, or with "autolaunch:", GLib would look
/// for a bus elsewhere or launch one.
inline bool namesASessionBus() {
    const char* address = std::getenv("DBUS_SESSION_BUS_ADDRESS");
    const std::string_view text(address ? address : "");
    return !text.empty() && !text.contains("autolaunch:");
}

} // namespace morvex
