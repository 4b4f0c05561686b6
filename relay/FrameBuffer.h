#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// Collects one frame as its bytes arrive. Its pieces take at most twice the bytes received plus
/// `longestPiece`. Owned by a session.
class FrameBuffer {
  public:
    /// In bytes. The program makes the heap return blocks of this size to the system as soon as they are
    /// freed.
    static constexpr std::size_t longestPiece = std::size_t{256} * 1024;

    void append(std::string_view bytes);
    void clear();
    /// Returns the whole frame, in memory of exactly its size, and empties the buffer.
    [[nodiscard]] std::string take();

    [[nodiscard]] std::size_t size() const { return size_; }

    /// Bytes of memory used.
    [[nodiscard]] std::size_t capacity() const { return capacity_; }

  private:
    void addPiece(std::size_t needed);

    std::vector<std::string> pieces_;
    std::size_t size_ = 0;
    std::size_t capacity_ = 0;
};

} // namespace morvex
