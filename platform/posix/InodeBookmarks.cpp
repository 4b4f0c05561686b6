#include "platform/posix/InodeBookmarks.h"

#include "foundation/Text.h"
#include "platform/posix/base/Uninterrupted.h"
#include "shared/base/SystemError.h"
#include "shared/base/Try.h"
#include "shared/wire/Json.h"

#include <boost/json.hpp>

#include <cerrno>
#include <sys/stat.h>

namespace morvex {

namespace {

constexpr std::size_t longestBookmark = 64 * 1024;

Result<std::uint64_t> inodeOf(const std::string& folder) {
    struct stat status{};
    if (!folder.starts_with('/') || folder.contains('\0')) return fail(SystemError{EINVAL});
    if (uninterrupted([&] { return ::stat(folder.c_str(), &status); }) != 0) return fail(SystemError{errno});
    if (!S_ISDIR(status.st_mode)) return fail(SystemError{ENOTDIR});
    return status.st_ino;
}

} // namespace

Result<Bytes> InodeBookmarks::create(const std::string& path) {
    if (!isValidUtf8(path)) return fail(SystemError{EILSEQ});
    TRY(auto, inode, inodeOf(path));
    return toBytes(boost::json::serialize(boost::json::object{{"inode", inode}, {"path", path}}));
}

std::optional<FolderBookmarks::Resolved> InodeBookmarks::resolve(ByteView bookmark) {
    auto parsed = parseJson(asText(bookmark), {.size = longestBookmark});
    const auto* object = parsed ? parsed->if_object() : nullptr;
    const auto* path = object ? object->if_contains("path") : nullptr;
    const auto* inode = object ? object->if_contains("inode") : nullptr;
    if (!path || !path->is_string() || !inode) return std::nullopt;

    boost::system::error_code error;
    auto wanted = inode->to_number<std::uint64_t>(error);
    std::string folder(path->as_string());
    auto found = inodeOf(folder);
    // A folder that cannot be checked at present may still be the right one.
    const bool mayBeIt = found ? wanted == *found : !saysMissing(systemCode(found.error()));
    if (error || !mayBeIt) return std::nullopt;
    return Resolved{std::move(folder), false};
}

bool InodeBookmarks::startAccess(const std::string&) {
    return false;
}

void InodeBookmarks::stopAccess(const std::string&) {}

} // namespace morvex
