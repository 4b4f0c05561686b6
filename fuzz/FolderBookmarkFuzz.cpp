#include "fuzz/MemoryFolder.h"
#include "platform/posix/InodeBookmarks.h"
#include "shared/base/Bytes.h"
#include "shared/base/Require.h"

#include <cstddef>
#include <cstdint>
#include <sys/stat.h>

namespace {

using namespace morvex;

std::uint64_t inodeOf(const std::string& folder) {
    struct stat status{};
    require(::stat(folder.c_str(), &status) == 0 && S_ISDIR(status.st_mode), "a bookmark leads to no folder");
    return status.st_ino;
}

/// Replaces every @ by the folder and every # by its inode, so that some inputs lead to the folder.
std::string filledIn(std::string_view text, const std::string& folder, const std::string& inode) {
    std::string filled;
    for (char each : text) {
        if (each == '@')
            filled += folder;
        else if (each == '#')
            filled += inode;
        else
            filled += each;
    }
    return filled;
}

} // namespace

/// A bookmark of an allowed folder in the settings.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const MemoryFolder folder;
    static const auto inode = std::to_string(inodeOf(folder.path()));
    InodeBookmarks bookmarks;
    const auto resolved =
        bookmarks.resolve(asBytes(filledIn(asText({data, size}), folder.path().string(), inode)));
    if (!resolved) return 0;
    require(resolved->path.starts_with('/') && !resolved->path.contains('\0'), "a bookmark without a place");
    (void)inodeOf(resolved->path);
    const auto made = bookmarks.create(resolved->path);
    const auto again = made ? bookmarks.resolve(*made) : std::nullopt;
    require(again && again->path == resolved->path, "a bookmark of the same folder leads elsewhere");
    return 0;
}
