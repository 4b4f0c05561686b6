#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// Gathers one frame as its bytes come, in pieces that hold at most twice as much as has come, and at most
/// `longestPiece` more. Owned by a session.
class FrameBuffer {
  public:
    /// The program lets the heap give blocks of this size back to the system as soon as they are freed.
    static constexpr std::size_t longestPiece = std::size_t{256} * 1024;

    void append(std::string_view bytes);
    void clear();
    /// The whole frame, in memory of just its size. Nothing is held afterwards.
    [[nodiscard]] std::string take();

    [[nodiscard]] std::size_t size() const { return size_; }

    /// Bytes of memory.
    [[nodiscard]] std::size_t capacity() const { return capacity_; }

  private:
    void addPiece(std::size_t needed);

    std::vector<std::string> pieces_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace morvex
