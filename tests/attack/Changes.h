#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace morvex {

/// Calls `attempt(changed, place)` with every text that differs from `genuine` in one bit; `place` is the
/// index of the changed byte. Returns the number of calls.
template <class Attempt> std::size_t withEveryBitChanged(std::string_view genuine, Attempt attempt) {
    std::string changed(genuine);
    for (std::size_t bit = 0; bit < 8 * genuine.size(); ++bit) {
        auto& byte = changed[bit / 8];
        const auto before = byte;
        byte = static_cast<char>(static_cast<unsigned char>(byte) ^ (1U << bit % 8));
        attempt(changed, bit / 8);
        byte = before;
    }
    return 8 * genuine.size();
}

/// Calls `attempt(shorter)` with every proper prefix of `genuine`, including the empty one. Returns the
/// number of calls.
template <class Attempt> std::size_t withEveryTruncation(std::string_view genuine, Attempt attempt) {
    for (std::size_t length = 0; length < genuine.size(); ++length)
        attempt(std::string(genuine.substr(0, length)));
    return genuine.size();
}

} // namespace morvex
