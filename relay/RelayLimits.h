#pragma once

#include "shared/base/FrameLimit.h"

#include <chrono>
#include <cstddef>

namespace morvex {

inline constexpr std::size_t kibibyte = 1024;
inline constexpr std::size_t mebibyte = 1024 * kibibyte;

/// What one relay takes upon itself. The defaults are those of the program; tests make them small.
struct RelayLimits {
    using Time = std::chrono::milliseconds;

    std::size_t connections = 1024;           ///< of both kinds together; another one is closed at once
    std::size_t httpHeader = 8 * kibibyte;    ///< request line and headers
    std::size_t httpBody = 64 * kibibyte;     ///< of a pairing call
    std::size_t callsPerMinute = 30;          ///< pairing calls of one address that is not this computer
    std::size_t loginFrame = 16 * kibibyte;   ///< a frame of a device that has not logged in
    std::size_t frame = frameLimit;           ///< a frame of a device that has; a longer one is passed over
    std::size_t passedOver = passedOverLimit; ///< bytes of one such frame; beyond them the socket ends
    std::size_t waiting = 16 * mebibyte;      ///< bytes for a device above which its sender is not read
    std::size_t heldInAll = 512 * mebibyte;   ///< for all devices; above it the greediest one is cut off

    Time request{std::chrono::seconds{10}};   ///< for a whole HTTP request, the TLS handshake included
    Time login{std::chrono::seconds{10}};     ///< from the challenge to the accepted login
    Time pingAfter{std::chrono::seconds{30}}; ///< of silence
    Time silence{std::chrono::seconds{90}};   ///< after which a device counts as gone
    /// In which a device takes nothing of what waits for it. A computer takes nothing more while one call of
    /// the phone runs, which lasts two minutes at most.
    Time stall{std::chrono::seconds{150}};
    Time closing{std::chrono::seconds{5}}; ///< for the last frame and the closing handshake
    Time tick{std::chrono::seconds{1}};    ///< how often the times above are looked at
};

} // namespace morvex
