#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace morvex {

/// Inspects the frames of a peer (RFC 6455, section 5.2) before Boost.Beast reads them. Where Beast would
/// accept something that the RFC forbids, it corrupts the bytes so that Beast itself fails the connection
/// with 1002:
///
/// - a length of 2^63 or more becomes one that is not written in its shortest form;
/// - a close code of 5000 or more (section 7.4.2) becomes one below 1000.
///
/// Beast judges everything else. Beast reads nothing after a frame that it refused, so the screen need not
/// stay in step after one. One object serves one connection, on one thread.
class FrameScreen {
  public:
    /// What the first bytes are: frames, or the head of the HTTP answer that precedes them.
    enum class Start { frames, answer };

    explicit FrameScreen(Start start) : part_(start == Start::answer ? Part::answer : Part::first) {}

    /// Takes the next bytes of the peer; each byte must be passed once. Returns false when a forbidden close
    /// code can no longer be corrupted because its first byte was in an earlier call; the caller must then
    /// cut the connection.
    [[nodiscard]] bool pass(std::span<std::uint8_t> bytes);

  private:
    enum class Part { answer, first, length, longLength, key, payload };

    void passByte(std::uint8_t& byte);
    void passAnswer(std::uint8_t byte);
    void passLength(std::uint8_t byte);
    void passLongLength(std::uint8_t& byte);
    void passKey(std::uint8_t byte);
    bool passCloseCode(std::span<std::uint8_t> payload);
    void lengthIsKnown();
    void begin(Part part);

    Part part_;
    std::size_t seen_ = 0; ///< bytes of this part seen so far
    bool isClose_ = false;
    bool isTooLong_ = false;
    std::size_t lengthBytes_ = 0; ///< length of the extended length field
    std::uint64_t remaining_ = 0; ///< bytes of the payload still to come
    bool isMasked_ = false;
    std::array<std::uint8_t, 4> key_{}; ///< zeros if the frame is not masked
    std::uint8_t firstOfCode_ = 0;
};

} // namespace morvex
