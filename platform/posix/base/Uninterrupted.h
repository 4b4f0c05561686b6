#pragma once

#include <cerrno>

namespace morvex {

/// Repeats a system call as long as signals interrupt it and returns its final result.
template <class Call> auto uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

} // namespace morvex
