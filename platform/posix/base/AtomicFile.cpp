#include "platform/posix/base/AtomicFile.h"

#include "platform/posix/base/FileDescriptor.h"
#include "platform/posix/base/Kernel.h"
#include "platform/posix/base/Uninterrupted.h"
#include "shared/base/SystemError.h"
#include "shared/base/Try.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <string>
#include <sys/file.h>
#include <sys/stat.h>
#include <system_error>
#include <unistd.h>

namespace morvex {

namespace {

std::unexpected<Error> failure(int code) {
    return fail(SystemError{code});
}

Result<void> flush(int file) {
    if (uninterrupted([&] { return ::fsync(file); }) != 0) return failure(errno);
    return {};
}

/// So that the names in it outlive a loss of power.
Result<void> flushFolder(const std::filesystem::path& folder) {
    FileDescriptor opened(
        uninterrupted([&] { return ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC); }));
    return opened ? flush(opened.get()) : failure(errno);
}

/// The beginning of the name of a file that is still being written, to become `path`.
std::string draftPrefix(const std::filesystem::path& path) {
    return "." + path.filename().string() + ".new-";
}

struct Draft {
    FileDescriptor file;
    std::string path;
};

Result<Draft> makeDraft(const std::filesystem::path& path) {
    Draft draft;
    draft.file = FileDescriptor(uninterrupted([&] {
        draft.path = (path.parent_path() / (draftPrefix(path) + "XXXXXX")).string();
        return ::mkostemp(draft.path.data(), O_CLOEXEC);
    }));
    if (!draft.file) return failure(errno);
    // The lock tells others that somebody still writes here. Where there are no locks nobody takes it away.
    uninterrupted([&] { return ::flock(draft.file.get(), LOCK_EX | LOCK_NB); });
    return draft;
}

Result<void> complete(const Draft& draft, ByteView bytes, const std::filesystem::path& path) {
    if (uninterrupted([&] { return ::fchmod(draft.file.get(), 0600); }) != 0) return failure(errno);
    if (auto written = writeAll(draft.file.get(), bytes); !written) return written;
    if (auto flushed = flush(draft.file.get()); !flushed) return flushed;
    if (uninterrupted([&] { return ::rename(draft.path.c_str(), path.c_str()); }) != 0) return failure(errno);
    return {};
}

void removeUnlessWritten(const std::filesystem::path& draft) {
    FileDescriptor file(::open(draft.c_str(), O_RDONLY | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK | O_NOCTTY));
    if (file && ::flock(file.get(), LOCK_EX | LOCK_NB) == 0) ::unlink(draft.c_str());
}

} // namespace

Result<void> writeAtomically(const std::filesystem::path& path, ByteView bytes) {
    auto folder = path.parent_path();
    if (auto made = makePrivateFolders(folder); !made) return made;
    removeDrafts(path);
    TRY(auto, draft, makeDraft(path));
    if (auto completed = complete(draft, bytes, path); !completed) {
        ::unlink(draft.path.c_str());
        return completed;
    }
    return flushFolder(folder);
}

void removeDrafts(const std::filesystem::path& path) {
    const auto prefix = draftPrefix(path);
    std::error_code error;
    std::filesystem::directory_iterator entry(path.parent_path(), error);
    for (; !error && entry != std::filesystem::directory_iterator(); entry.increment(error))
        if (entry->path().filename().string().starts_with(prefix)) removeUnlessWritten(entry->path());
}

Result<std::optional<Bytes>> readWhole(const std::filesystem::path& path, std::size_t limit) {
    FileDescriptor file(
        uninterrupted([&] { return ::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY); }));
    if (!file) {
        if (errno == ENOENT || errno == ENOTDIR) return std::nullopt;
        return failure(errno);
    }
    struct stat status{};
    if (uninterrupted([&] { return ::fstat(file.get(), &status); }) != 0) return failure(errno);
    if (!S_ISREG(status.st_mode)) return failure(EINVAL);
    TRY(auto, bytes, readUpTo(file.get(), limit));
    return std::optional(std::move(bytes));
}

Result<void> makePrivateFolders(const std::filesystem::path& folder) {
    if (folder.empty() || uninterrupted([&] { return ::access(folder.c_str(), F_OK); }) == 0) return {};
    // Whatever else is wrong with a folder is wrong with those above it up to the root, which has none above.
    if (errno != ENOENT) return failure(errno);
    const auto parent = folder.has_parent_path() ? folder.parent_path() : ".";
    if (auto made = makePrivateFolders(parent); !made) return made;
    if (uninterrupted([&] { return ::mkdir(folder.c_str(), 0700); }) != 0 && errno != EEXIST)
        return failure(errno);
    return flushFolder(parent);
}

namespace {

/// 0, or the code of the failure: EEXIST when the name is taken. What has the name is never replaced.
int moveUnlessTaken(const char* path, const char* name) {
    if (uninterrupted([&] { return ::link(path, name); }) == 0) {
        if (uninterrupted([&] { return ::unlink(path); }) == 0) return 0;
        const int code = errno;
        uninterrupted([&] { return ::unlink(name); });
        return code;
    }
    // Some file systems, those of memory cards and of a network above all, have no hard links.
    const int refusal = errno;
    struct stat status{};
    const bool isFile = ::lstat(path, &status) == 0 && S_ISREG(status.st_mode);
    if ((refusal != EPERM && refusal != EOPNOTSUPP && refusal != ENOSYS) || !isFile) return refusal;
    auto move = [&] { return kernel::renameUnlessTaken(path, name); };
    return uninterrupted(move) == 0 ? 0 : errno;
}

} // namespace

Result<std::filesystem::path> setAside(const std::filesystem::path& path) {
    constexpr int mostCopies = 1000;
    for (int copy = 1; copy <= mostCopies; ++copy) {
        auto name = path.string() + ".damaged" + (copy == 1 ? "" : "-" + std::to_string(copy));
        const int code = moveUnlessTaken(path.c_str(), name.c_str());
        if (code == 0) return std::filesystem::path(name);
        if (code != EEXIST) return failure(code);
    }
    return failure(EEXIST);
}

} // namespace morvex
