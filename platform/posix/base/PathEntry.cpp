#include "platform/posix/base/PathEntry.h"

#include "platform/posix/base/Uninterrupted.h"
#include "shared/base/SystemError.h"

#include <array>
#include <cerrno>
#include <climits>
#include <sys/stat.h>
#include <unistd.h>

namespace morvex {

PathEntry PathEntry::at(const std::string& path) {
    if (path.contains('\0')) return {};
    struct stat status{};
    if (::lstat(path.c_str(), &status) != 0) return {};
    if (!S_ISLNK(status.st_mode)) return {.kind = Kind::other};
    std::array<char, PATH_MAX> target{};
    auto length = ::readlink(path.c_str(), target.data(), target.size());
    if (length < 0) return {};
    return {Kind::link, std::string(target.data(), static_cast<std::size_t>(length))};
}

Result<bool> leadsToFolder(const std::string& path) {
    struct stat status{};
    if (!path.starts_with('/') || path.contains('\0')) return fail(SystemError{ENOENT});
    if (uninterrupted([&] { return ::stat(path.c_str(), &status); }) != 0) return fail(SystemError{errno});
    return S_ISDIR(status.st_mode);
}

bool isExecutableFile(const std::string& path) {
    struct stat status{};
    return ::stat(path.c_str(), &status) == 0 && S_ISREG(status.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

} // namespace morvex
