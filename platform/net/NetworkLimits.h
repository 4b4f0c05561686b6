#pragma once

#include <chrono>

namespace morvex {

/// Time limits for opening and closing a connection.
struct NetworkLimits {
    std::chrono::milliseconds opening{60'000}; ///< from the name look-up to the end of the handshakes
    std::chrono::milliseconds closing{2'000};  ///< for the peer's answer to the farewell
};

} // namespace morvex
