#pragma once

#include "shared/base/Bytes.h"
#include "shared/base/Error.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <utility>

namespace morvex {

/// The one file in which a store keeps its records. Owned by the store, on the store's thread: `read` once at
/// the start, `markDamaged` when that was not the store's form, then `save` at every change. What could not
/// be read is nobody's to overwrite: the next `save` puts it aside first (see `setAside`).
class ArchiveFile {
  public:
    /// `limit` bytes are read and written at most.
    ArchiveFile(std::filesystem::path path, std::size_t limit) : path_(std::move(path)), limit_(limit) {}

    /// The whole file; nothing when there is none. A failure marks the file as damaged.
    Result<std::optional<Bytes>> read();

    void markDamaged() { isDamaged_ = true; }

    /// Replaces the file atomically; missing folders are made. More than the limit fails with EFBIG, since it
    /// could not be read again. When a damaged file cannot be put aside, nothing is written.
    Result<void> save(ByteView bytes);

  private:
    Result<void> putDamagedAside();

    std::filesystem::path path_;
    std::size_t limit_;
    bool isDamaged_ = false;
};

} // namespace morvex
