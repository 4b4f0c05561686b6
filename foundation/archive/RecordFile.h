#pragma once

#include "foundation/ArchiveFile.h"
#include "shared/base/SystemError.h"
#include "shared/wire/Json.h"

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <utility>

namespace morvex {

/// A store's file that holds one record `Archive` with a `schemaVersion`, as JSON. Owned by the store: `load`
/// once at the start, then `save` at every change, one at a time, on any thread. Everything that was saved
/// can be loaded.
template <class Archive> class RecordFile {
  public:
    /// Limit of the file in bytes.
    static constexpr std::size_t sizeLimit = 64 * 1024 * 1024;

    explicit RecordFile(std::filesystem::path path) : file_(std::move(path), sizeLimit) {}

    /// The content of the file. Returns an empty archive if the file is missing, cannot be read, is not such
    /// an archive or has another version. In the last two cases the next save puts the file aside; if the
    /// file could not be read, nothing is saved.
    Archive load() {
        auto bytes = file_.read();
        if (!bytes || !*bytes) return {};
        auto archive = decode<Archive>(**bytes, fileLimits(sizeLimit, (*bytes)->size()));
        if (archive && archive->schemaVersion == Archive{}.schemaVersion) return *std::move(archive);
        file_.markDamaged();
        return {};
    }

    /// Fails and leaves the file alone when the JSON is longer than `sizeLimit`, or has so many values that
    /// `load` would refuse it.
    Result<void> save(const Archive& archive) {
        const auto json = encode(archive);
        if (json.size() > sizeLimit) return fail(SystemError{EFBIG});
        if (auto readable = checkReadable(json, fileLimits(sizeLimit, json.size())); !readable)
            return readable;
        return file_.save(asBytes(json));
    }

  private:
    ArchiveFile file_;
};

} // namespace morvex
