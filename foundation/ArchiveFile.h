#pragma once

#include "shared/base/Bytes.h"
#include "shared/base/Error.h"

#include <cstddef>
#include <filesystem>
#include <optional>
#include <utility>

namespace morvex {

/// The single file in which a store keeps its records. Owned by the store and used on the store's thread:
/// `read` once at the start, `markDamaged` if the content did not have the store's form, then `save` at every
/// change. A damaged file is never overwritten: the next `save` first puts it aside (see `setAside`). A file
/// that could not be read, because of a disk failure or missing rights, may be intact: nothing is written
/// until the next start.
class ArchiveFile {
  public:
    /// `limit`: the most bytes that are read or written.
    ArchiveFile(std::filesystem::path path, std::size_t limit) : path_(std::move(path)), limit_(limit) {}

    /// The whole file, or nothing if it does not exist. A file above the limit, or something that is not a
    /// regular file, counts as damaged.
    Result<std::optional<Bytes>> read();

    void markDamaged() { isDamaged_ = true; }

    /// Replaces the file atomically and creates missing folders. Content above the limit fails with EFBIG,
    /// since it could not be read again. If a damaged file cannot be put aside, nothing is written. If the
    /// existing file could not be read, fails with the error of `read`.
    Result<void> save(ByteView bytes);

  private:
    Result<void> putDamagedAside();

    std::filesystem::path path_;
    std::size_t limit_;
    bool isDamaged_ = false;
    std::optional<Error> unread_; ///< why the existing file could not be read
};

} // namespace morvex
