#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace morvex {

/// Looks over the frames of a peer (RFC 6455, section 5.2) on their way to Boost.Beast, and spoils what Beast
/// would take though the RFC forbids it, so that Beast itself fails the connection with 1002:
///
/// - a length of 2^63 or more becomes one that is not written in its shortest form;
/// - a close code of 5000 or more (section 7.4.2) becomes one below 1000.
///
/// Everything else is for Beast to judge. Behind a frame that Beast refuses nothing is read any more, so the
/// screen need not find its place there. For one connection, on one thread.
class FrameScreen {
  public:
    /// What comes first: frames, or the head of the HTTP answer before them.
    enum class Start { frames, answer };

    explicit FrameScreen(Start start) : part_(start == Start::answer ? Part::answer : Part::first) {}

    /// The next bytes of the peer, each of them once. False when it is too late to spoil them, since the
    /// first byte of a forbidden close code came with the bytes before: the connection must be cut then.
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
    std::size_t seen_ = 0; ///< bytes of this part
    bool isClose_ = false;
    bool isTooLong_ = false;
    std::size_t lengthBytes_ = 0; ///< behind the second byte of the frame
    std::uint64_t remaining_ = 0; ///< bytes of the payload that are still to come
    bool isMasked_ = false;
    std::array<std::uint8_t, 4> key_{}; ///< zeros without a mask
    std::uint8_t firstOfCode_ = 0;
};

} // namespace morvex
