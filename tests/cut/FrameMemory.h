#pragma once

#include <cstddef>
#include <span>
#include <string>

namespace morvex {

/// Follows the bytes of one direction of a WebSocket and knows its last whole frame (RFC 6455, section 5.2).
class FrameMemory {
  public:
    /// Takes the bytes up to the end of the next frame, or of the opening before the first. Gives how many.
    std::size_t take(std::span<const char> bytes);

    /// Whether what was taken last ended a frame.
    [[nodiscard]] bool isAtEndOfFrame() const { return hasOpened_ && current_.empty() && !last_.empty(); }

    [[nodiscard]] const std::string& last() const { return last_; }

  private:
    /// Of the frame that `current_` begins, of its head while that is not whole.
    [[nodiscard]] std::size_t length() const;

    bool hasOpened_ = false;
    std::string current_;
    std::string last_;
};

} // namespace morvex
