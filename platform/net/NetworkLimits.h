#pragma once

#include <chrono>

namespace morvex {

/// How long the ends of a connection may take.
struct NetworkLimits {
    std::chrono::milliseconds opening{60'000}; ///< from the name look-up to the end of the handshakes
    std::chrono::milliseconds closing{2'000};  ///< how long a peer may take to answer the farewell
};

} // namespace morvex
