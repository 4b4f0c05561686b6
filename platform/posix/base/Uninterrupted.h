#pragma once

#include <cerrno>

namespace morvex {

/// What a system call gives that is made again for as long as signals interrupt it.
template <class Call> auto uninterrupted(Call call) {
    auto result = call();
    while (result < 0 && errno == EINTR) result = call();
    return result;
}

} // namespace morvex
