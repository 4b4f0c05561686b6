#pragma once

#include "foundation/ArchiveFile.h"
#include "shared/base/SystemError.h"
#include "shared/wire/Json.h"

#include <cerrno>
#include <cstddef>
#include <filesystem>
#include <utility>

namespace morvex {

/// A store's file that holds one record `Archive`, which has a `schemaVersion`, as JSON. Owned by the store,
/// `load` once at the start, then `save` at every change, one at a time, on whatever thread. Whatever was
/// saved can be loaded.
template <class Archive> class RecordFile {
  public:
    /// Bytes of the file.
    static constexpr std::size_t sizeLimit = 64 * 1024 * 1024;

    explicit RecordFile(std::filesystem::path path) : file_(std::move(path), sizeLimit) {}

    /// What the file holds. A file that is missing, cannot be read, is no such archive or has another version
    /// counts as none. The last two are kept aside when the file is next saved; while there is one that could
    /// not be read nothing is saved.
    Archive load() {
        auto bytes = file_.read();
        if (!bytes || !*bytes) return {};
        auto archive = decode<Archive>(**bytes, fileLimits(sizeLimit, (*bytes)->size()));
        if (archive && archive->schemaVersion == Archive{}.schemaVersion) return *std::move(archive);
        file_.markDamaged();
        return {};
    }

    /// Fails, and leaves the file alone, when it is longer than `sizeLimit` or `load` would refuse its many
    /// values.
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
