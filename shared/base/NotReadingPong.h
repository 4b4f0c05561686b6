#pragma once

#include <string_view>

namespace morvex {

/// The payload of a pong that the relay sends unasked (RFC 6455, section 5.5.3), again and again, to a device
/// that it does not read at present because too much waits for the other one. The device's own pings cannot
/// arrive meanwhile; this tells it that the relay is there.
inline constexpr std::string_view notReadingPong = "not reading";

} // namespace morvex
