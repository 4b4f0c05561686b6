#include "platform/posix/BeneathFolder.h"

#include "foundation/Paths.h"
#include "foundation/Text.h"
#include "platform/posix/base/Kernel.h"
#include "shared/base/SystemError.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <cerrno>
#include <fcntl.h>
#include <optional>
#include <string>
#include <sys/stat.h>
#include <unistd.h>
#include <vector>

namespace morvex {

namespace {

/// The folders above the last component, and that component.
struct Way {
    std::vector<std::string> folders;
    std::string name = ".";
};

Result<Way> wayOf(std::string_view path) {
    if (path.contains('\0')) return fail(SystemError{EINVAL});
    Way way;
    way.folders = paths::components(path);
    if (std::ranges::find(way.folders, "..") != way.folders.end()) return fail(SystemError{EXDEV});
    if (way.folders.empty()) return way;
    way.name = std::move(way.folders.back());
    way.folders.pop_back();
    return way;
}

Result<FileDescriptor> openAt(int folder, const std::string& name, int flags, mode_t mode = 0) {
    int opened = ::openat(folder, name.c_str(), flags | O_CLOEXEC | O_NOFOLLOW, mode);
    if (opened < 0) return fail(SystemError{errno});
    return FileDescriptor(opened);
}

Result<FileDescriptor> enterOrMake(int folder, const std::string& name) {
    auto entered = openAt(folder, name, kernel::passThrough | O_DIRECTORY);
    if (entered || systemCode(entered.error()) != ENOENT) return entered;
    if (::mkdirat(folder, name.c_str(), 0755) != 0 && errno != EEXIST) return fail(SystemError{errno});
    return openAt(folder, name, kernel::passThrough | O_DIRECTORY);
}

/// The whole way in one call of the kernel. Nothing where there is no such call: older kernels do not know
/// it, and some containers forbid it.
std::optional<Result<FileDescriptor>> enterAtOnce(int folder, const std::vector<std::string>& names) {
    const auto way = names.empty() ? "." : join(names, "/");
    const int opened = kernel::openFolderBeneath(folder, way.c_str());
    if (opened >= 0) return FileDescriptor(opened);
    if (errno == ENOSYS || errno == EPERM) return std::nullopt;
    return fail(SystemError{errno});
}

Result<FileDescriptor> descend(int folder, const std::vector<std::string>& names) {
    if (auto entered = enterAtOnce(folder, names)) return *std::move(entered);
    TRY(FileDescriptor, here, openAt(folder, ".", kernel::passThrough | O_DIRECTORY));
    for (const auto& name : names) {
        TRY(FileDescriptor, next, openAt(here.get(), name, kernel::passThrough | O_DIRECTORY));
        here = std::move(next);
    }
    return here;
}

Result<FileDescriptor> descendMaking(int folder, const std::vector<std::string>& names,
                                     const BeneathFolder::MayHold& mayHold) {
    TRY(FileDescriptor, here, openAt(folder, ".", kernel::passThrough | O_DIRECTORY));
    for (const auto& name : names) {
        CHECK(mayHold(here.get(), name, BeneathFolder::Held::folder));
        TRY(FileDescriptor, next, enterOrMake(here.get(), name));
        here = std::move(next);
    }
    return here;
}

Result<void> expectFile(const struct stat& status) {
    if (S_ISREG(status.st_mode)) return {};
    return fail(SystemError{S_ISDIR(status.st_mode) ? EISDIR : EINVAL});
}

Result<struct stat> lookAt(int folder, const std::string& name) {
    struct stat status{};
    if (::fstatat(folder, name.c_str(), &status, AT_SYMLINK_NOFOLLOW) != 0) return fail(SystemError{errno});
    return status;
}

/// Whether the name still is the one of the file that was opened.
bool isNameOf(int file, int folder, const std::string& name) {
    struct stat opened{};
    auto found = lookAt(folder, name);
    return found && ::fstat(file, &opened) == 0 && found->st_dev == opened.st_dev &&
           found->st_ino == opened.st_ino;
}

Result<struct stat> statusOf(int folder, std::string_view path) {
    TRY(auto, way, wayOf(path));
    TRY(FileDescriptor, parent, descend(folder, way.folders));
    return lookAt(parent.get(), way.name);
}

} // namespace

Result<BeneathFolder> BeneathFolder::open(std::string_view resolvedPath) {
    TRY(auto, way, wayOf(resolvedPath));
    way.folders.push_back(std::move(way.name));
    TRY(FileDescriptor, root, openAt(AT_FDCWD, "/", kernel::passThrough | O_DIRECTORY));
    TRY(FileDescriptor, folder, descend(root.get(), way.folders));
    return BeneathFolder(std::move(folder));
}

Result<bool> BeneathFolder::exists(std::string_view path) const {
    auto found = statusOf(folder_.get(), path);
    if (found) return true;
    auto code = systemCode(found.error());
    if (code == ENOENT || code == ENOTDIR) return false;
    return fail(found.error());
}

Result<FileDescriptor> BeneathFolder::openFile(std::string_view path) const {
    TRY(auto, way, wayOf(path));
    TRY(FileDescriptor, parent, descend(folder_.get(), way.folders));
    TRY(struct stat, status, lookAt(parent.get(), way.name));
    CHECK(expectFile(status));

    // The name may be another thing by now: nothing here waits for a pipe or takes a terminal.
    TRY(FileDescriptor, opened, openAt(parent.get(), way.name, O_RDONLY | O_NONBLOCK | O_NOCTTY));
    if (::fstat(opened.get(), &status) != 0) return fail(SystemError{errno});
    CHECK(expectFile(status));
    return opened;
}

Result<FileDescriptor> BeneathFolder::openFolder(std::string_view path) const {
    TRY(auto, way, wayOf(path));
    TRY(FileDescriptor, parent, descend(folder_.get(), way.folders));
    return openAt(parent.get(), way.name, O_RDONLY | O_DIRECTORY);
}

Result<void> BeneathFolder::writeNew(std::string_view path, ByteView bytes, const MayHold& mayHold) const {
    TRY(auto, way, wayOf(path));
    TRY(FileDescriptor, parent, descendMaking(folder_.get(), way.folders, mayHold));
    CHECK(mayHold(parent.get(), way.name, Held::file));
    TRY(FileDescriptor, file,
        openAt(parent.get(), way.name, O_WRONLY | O_CREAT | O_EXCL | O_NONBLOCK | O_NOCTTY, 0644));
    auto written = writeAll(file.get(), bytes);
    if (!written && isNameOf(file.get(), parent.get(), way.name))
        ::unlinkat(parent.get(), way.name.c_str(), 0);
    return written;
}

} // namespace morvex
