#pragma once

#include "relay/Origin.h"
#include "shared/base/FrameLimit.h"

#include <chrono>
#include <cstddef>

namespace morvex {

inline constexpr std::size_t kibibyte = 1024;
inline constexpr std::size_t mebibyte = 1024 * kibibyte;

/// The limits of one relay. The defaults are those of the program; tests use smaller ones. `Places::Bounds`
/// divides the connections among standings and networks. Limits per address also apply, in multiples, to the
/// neighbouring addresses together (`OriginLimit`), but not to this computer.
struct RelayLimits {
    using Time = std::chrono::milliseconds;

    std::size_t connections = 1024;           ///< HTTP and WebSocket together
    std::size_t httpHeader = 8 * kibibyte;    ///< request line and headers
    std::size_t httpBody = 64 * kibibyte;     ///< content of a pairing call
    std::size_t loginFrame = 16 * kibibyte;   ///< a frame before the login
    std::size_t frame = frameLimit;           ///< a frame after the login; a longer one is skipped
    std::size_t passedOver = passedOverLimit; ///< bytes of a skipped frame; a longer one ends the socket
    std::size_t waiting = 16 * mebibyte;      ///< bytes queued for a device; above it its sender is not read
    std::size_t heldInAll = 512 * mebibyte;   ///< bytes for all devices; above it the greediest is closed

    std::size_t connectionsPerMinute = 600; ///< new connections per address
    std::size_t callsPerMinute = 30;        ///< pairing calls per address
    std::size_t pairsPerDay = 200;          ///< new pairs per address
    std::size_t loginsPerMinute = 240;      ///< logins per address
    std::size_t failedLoginCost = 4;        ///< a login that fails or never comes counts as this many
    Origin::ThisComputer thisComputer = Origin::ThisComputer::unlimited;

    Time firstByte{std::chrono::seconds{3}};  ///< for the first byte of a new connection
    Time handshake{std::chrono::seconds{5}};  ///< for the TLS handshake
    Time request{std::chrono::seconds{10}};   ///< for the whole HTTP request after that
    Time login{std::chrono::seconds{10}};     ///< from the challenge to the accepted login
    Time pingAfter{std::chrono::seconds{30}}; ///< of silence
    Time silence{std::chrono::seconds{90}};   ///< after which a device counts as gone
    /// The longest time in which a device reads nothing of its queue. A computer reads nothing more while a
    /// call of the phone runs, which takes at most two minutes.
    Time stall{std::chrono::seconds{150}};
    /// From the first byte of a frame to its last. An envelope is valid for one minute, so the frame of a
    /// slower device would be rejected anyway.
    Time wholeFrame{std::chrono::seconds{150}};
    Time closing{std::chrono::seconds{5}}; ///< for the last frame and the closing handshake
    Time tick{std::chrono::seconds{1}};    ///< how often the times above are checked

    std::chrono::minutes newPair{60}; ///< age from which a pair counts as known
};

} // namespace morvex
