#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <span>

namespace morvex {

/// Overwrites memory; the compiler cannot optimise it away.
void wipe(std::span<std::uint8_t> bytes);

/// A fixed number of secret bytes. They are overwritten with zeros when the object is destroyed or moved
/// from, and cannot be copied, compared or printed. Code that copies `view()` must wipe the copy.
template <std::size_t Size> class SecretBytes {
  public:
    SecretBytes() = default;

    ~SecretBytes() { wipe(bytes_); }

    SecretBytes(const SecretBytes&) = delete;
    SecretBytes& operator=(const SecretBytes&) = delete;

    SecretBytes(SecretBytes&& other) noexcept : bytes_(other.bytes_) { wipe(other.bytes_); }

    SecretBytes& operator=(SecretBytes&& other) noexcept {
        if (this == &other) return *this;
        bytes_ = other.bytes_;
        wipe(other.bytes_);
        return *this;
    }

    [[nodiscard]] std::span<const std::uint8_t, Size> view() const { return bytes_; }

    [[nodiscard]] std::span<std::uint8_t, Size> writable() { return bytes_; }

  private:
    std::array<std::uint8_t, Size> bytes_{};
};

} // namespace morvex
