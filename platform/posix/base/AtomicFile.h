#pragma once

#include "shared/base/Bytes.h"
#include "shared/base/Error.h"

#include <cstddef>
#include <filesystem>
#include <optional>

namespace morvex {

/// Replaces the file by `bytes` so that a crash leaves the old file or the new one: written beside it with
/// mode 0600, flushed, renamed, and the folder flushed. Missing parent folders are made with mode 0700. What
/// a save that a crash cut short has left beside the file is removed.
Result<void> writeAtomically(const std::filesystem::path& path, ByteView bytes);

/// Removes what saves of this file that crashed have left beside it; another that is under way is let be.
void removeDrafts(const std::filesystem::path& path);

/// The whole file; nothing when there is none. A file longer than `limit` bytes fails with EFBIG, anything
/// that is not a regular file with EINVAL.
Result<std::optional<Bytes>> readWhole(const std::filesystem::path& path, std::size_t limit);

/// Makes the folder and its missing parents, private to the user (0700), to outlive a loss of power.
Result<void> makePrivateFolders(const std::filesystem::path& folder);

/// Puts a damaged file out of the way under a name that is free, "<name>.damaged", "<name>.damaged-2" and so
/// on, so that the next save overwrites nobody's data. Gives the new name.
Result<std::filesystem::path> setAside(const std::filesystem::path& path);

} // namespace morvex
