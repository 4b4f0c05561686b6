#pragma once

#include "foundation/ArchiveFile.h"
#include "shared/wire/Json.h"

#include <cstddef>

namespace morvex {

/// How long the file of a store may be.
inline constexpr std::size_t longestArchive = 64 * 1024 * 1024;

/// What the file holds. A file that is missing, cannot be read, is no such archive or has another version
/// counts as none; the last three are kept aside when the file is next saved.
template <class Archive> Archive loadArchive(ArchiveFile& file) {
    auto bytes = file.read();
    if (!bytes || !*bytes) return {};
    auto archive = decode<Archive>(**bytes, longestArchive);
    if (archive && archive->schemaVersion == Archive{}.schemaVersion) return *std::move(archive);
    file.markDamaged();
    return {};
}

} // namespace morvex
