#pragma once

#include "shared/base/Bytes.h"
#include "shared/base/Error.h"

#include <cstddef>
#include <utility>

namespace morvex {

/// Owns an open file descriptor; -1 is none.
class FileDescriptor {
  public:
    FileDescriptor() = default;

    explicit FileDescriptor(int descriptor) : descriptor_(descriptor) {}

    FileDescriptor(FileDescriptor&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}

    FileDescriptor& operator=(FileDescriptor&& other) noexcept {
        std::swap(descriptor_, other.descriptor_);
        return *this;
    }

    ~FileDescriptor();

    [[nodiscard]] int get() const { return descriptor_; }

    /// Gives the descriptor away; whoever takes it closes it.
    [[nodiscard]] int release() { return std::exchange(descriptor_, -1); }

    explicit operator bool() const { return descriptor_ >= 0; }

  private:
    int descriptor_ = -1;
};

/// Everything up to the end of the file; more than `limit` bytes fail with EFBIG.
Result<Bytes> readUpTo(int file, std::size_t limit);

/// Writes all of the bytes, or fails after a part of them.
Result<void> writeAll(int file, ByteView bytes);

} // namespace morvex
