#pragma once

#include <string_view>

namespace morvex {

/// The payload of an unsolicited pong (RFC 6455, section 5.5.3). The relay sends it repeatedly to a device
/// that it currently does not read because too much waits for the other device. The relay cannot see that
/// device's pings meanwhile, so this pong tells it that the relay is alive.
inline constexpr std::string_view notReadingPong = "not reading";

} // namespace morvex
