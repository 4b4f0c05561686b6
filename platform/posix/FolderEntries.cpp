#include "platform/posix/FolderEntries.h"

#include "shared/base/SystemError.h"

#include <cerrno>
#include <dirent.h>
#include <fcntl.h>
#include <sys/stat.h>
#include <tuple>

namespace morvex {

namespace {

using Kind = FolderEntries::Kind;

DIR* systems(void* listing) {
    return static_cast<DIR*>(listing);
}

Kind kindOf(int folder, const dirent& entry) {
    if (entry.d_type == DT_REG) return Kind::file;
    if (entry.d_type == DT_DIR) return Kind::folder;
    if (entry.d_type != DT_UNKNOWN) return Kind::other;
    struct stat status{};
    if (::fstatat(folder, entry.d_name, &status, AT_SYMLINK_NOFOLLOW) != 0) return Kind::other;
    if (S_ISREG(status.st_mode)) return Kind::file;
    return S_ISDIR(status.st_mode) ? Kind::folder : Kind::other;
}

} // namespace

void FolderEntries::Close::operator()(void* listing) const {
    ::closedir(systems(listing));
}

Result<FolderEntries> FolderEntries::of(FileDescriptor folder) {
    Listing listing(::fdopendir(folder.get()));
    if (!listing) return fail(SystemError{errno});
    std::ignore = folder.release();
    return FolderEntries(std::move(listing));
}

Result<FolderEntries> FolderEntries::ofOpened(int folder) {
    FileDescriptor opened(::openat(folder, ".", O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!opened) return fail(SystemError{errno});
    return of(std::move(opened));
}

Result<std::optional<FolderEntries::Entry>> FolderEntries::next() {
    for (;;) {
        errno = 0;
        const auto* entry = ::readdir(systems(listing_.get()));
        if (!entry && errno != 0) return fail(SystemError{errno});
        if (!entry) return std::nullopt;
        const std::string_view name(entry->d_name);
        if (name != "." && name != "..") return Entry{name, kindOf(::dirfd(systems(listing_.get())), *entry)};
    }
}

Result<FolderEntries> FolderEntries::enter(std::string_view name) const {
    constexpr int flags = O_RDONLY | O_DIRECTORY | O_NOFOLLOW | O_CLOEXEC;
    FileDescriptor opened(::openat(::dirfd(systems(listing_.get())), std::string(name).c_str(), flags));
    if (!opened) return fail(SystemError{errno});
    return of(std::move(opened));
}

} // namespace morvex
