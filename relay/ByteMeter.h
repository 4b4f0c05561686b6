#pragma once

#include <cstdint>

namespace morvex {

/// The bytes that a socket has read and written, including those of TLS.
struct ByteMeter {
    std::uint64_t bytesRead = 0;
    std::uint64_t bytesWritten = 0;
};

} // namespace morvex
