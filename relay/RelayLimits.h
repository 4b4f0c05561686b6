#pragma once

#include "relay/Origin.h"
#include "shared/base/FrameLimit.h"

#include <chrono>
#include <cstddef>

namespace morvex {

inline constexpr std::size_t kibibyte = 1024;
inline constexpr std::size_t mebibyte = 1024 * kibibyte;

/// What one relay takes upon itself. The defaults are those of the program; tests make them small. Who may
/// have how many of the connections is said by `Places::Bounds`. What holds for an address holds, in
/// multiples, for its neighbours together (`OriginLimit`), and not for this computer.
struct RelayLimits {
    using Time = std::chrono::milliseconds;

    std::size_t connections = 1024;           ///< of both kinds together
    std::size_t httpHeader = 8 * kibibyte;    ///< request line and headers
    std::size_t httpBody = 64 * kibibyte;     ///< of a pairing call
    std::size_t loginFrame = 16 * kibibyte;   ///< a frame of a device that has not logged in
    std::size_t frame = frameLimit;           ///< a frame of a device that has; a longer one is passed over
    std::size_t passedOver = passedOverLimit; ///< bytes of one such frame; beyond them the socket ends
    std::size_t waiting = 16 * mebibyte;      ///< bytes for a device above which its sender is not read
    std::size_t heldInAll = 512 * mebibyte;   ///< for all devices; above it the greediest one is closed

    std::size_t connectionsPerMinute = 600; ///< new ones of one address
    std::size_t callsPerMinute = 30;        ///< pairing calls of one address
    std::size_t pairsPerDay = 200;          ///< new ones of one address
    std::size_t loginsPerMinute = 240;      ///< of one address
    std::size_t failedLoginCost = 4;        ///< as many logins does one count for that fails or never comes
    Origin::ThisComputer thisComputer = Origin::ThisComputer::unlimited;

    Time firstByte{std::chrono::seconds{3}};  ///< for a new connection to say anything
    Time handshake{std::chrono::seconds{5}};  ///< for the TLS handshake
    Time request{std::chrono::seconds{10}};   ///< for a whole HTTP request behind that
    Time login{std::chrono::seconds{10}};     ///< from the challenge to the accepted login
    Time pingAfter{std::chrono::seconds{30}}; ///< of silence
    Time silence{std::chrono::seconds{90}};   ///< after which a device counts as gone
    /// In which a device takes nothing of what waits for it. A computer takes nothing more while one call of
    /// the phone runs, which lasts two minutes at most.
    Time stall{std::chrono::seconds{150}};
    /// From the first byte of a frame to its last. An envelope is valid for a minute, so a device that needs
    /// longer is not understood anyway.
    Time wholeFrame{std::chrono::seconds{150}};
    Time closing{std::chrono::seconds{5}}; ///< for the last frame and the closing handshake
    Time tick{std::chrono::seconds{1}};    ///< how often the times above are looked at

    std::chrono::minutes newPair{60}; ///< a pair is a known one when it was made so long ago
};

} // namespace morvex
