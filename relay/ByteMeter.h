#pragma once

#include <cstdint>

namespace morvex {

/// How many bytes a socket has taken and given, those of TLS itself included.
struct ByteMeter {
    std::uint64_t bytesRead = 0;
    std::uint64_t bytesWritten = 0;
};

} // namespace morvex
