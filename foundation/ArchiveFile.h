#pragma once

#include "shared/base/Bytes.h"
#include "shared/base/Error.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <utility>

namespace morvex {

/// The one file in which a store keeps its records. Owned by the store, on the store's thread: `read` once at
/// the start, `markDamaged` when that was not the store's form, then `save` at every change. What is damaged
/// is nobody's to overwrite: the next `save` puts it aside first (see `setAside`). What could not be read, of
/// a disk that failed or a right that lacked, may be whole: nothing is written until the next start.
class ArchiveFile {
  public:
    /// `limit` bytes are read and written at most.
    ArchiveFile(std::filesystem::path path, std::size_t limit) : path_(std::move(path)), limit_(limit) {}

    /// The whole file; nothing when there is none. One that is too long or no file counts as damaged.
    Result<std::optional<Bytes>> read();

    void markDamaged() { isDamaged_ = true; }

    /// Replaces the file atomically; missing folders are made. More than the limit fails with EFBIG, since it
    /// could not be read again. When a damaged file cannot be put aside, nothing is written. Fails as `read`
    /// did when it could not read what is there.
    Result<void> save(ByteView bytes);

  private:
    Result<void> putDamagedAside();

    std::filesystem::path path_;
    std::size_t limit_;
    bool isDamaged_ = false;
    std::optional<Error> unread_; ///< why what is there could not be read
};

} // namespace morvex
