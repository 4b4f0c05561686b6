#include "foundation/AtomicFile.h"

#include "foundation/FileDescriptor.h"
#include "foundation/SystemError.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace morvex {

namespace {

std::unexpected<Error> failure(int code) {
    return fail(SystemError{code});
}

Result<void> flush(int file) {
    while (::fsync(file) != 0)
        if (errno != EINTR) return failure(errno);
    return {};
}

Result<void> writeNew(int file, ByteView bytes) {
    if (::fchmod(file, 0600) != 0) return failure(errno);
    if (auto written = writeAll(file, bytes); !written) return written;
    return flush(file);
}

} // namespace

Result<void> writeAtomically(const std::filesystem::path& path, ByteView bytes) {
    auto folder = path.parent_path();
    if (auto made = makePrivateFolders(folder); !made) return made;

    auto pattern = (folder / ("." + path.filename().string() + ".XXXXXX")).string();
    FileDescriptor file(::mkostemp(pattern.data(), O_CLOEXEC));
    if (!file) return failure(errno);
    auto written = writeNew(file.get(), bytes);
    if (written && ::rename(pattern.c_str(), path.c_str()) != 0) written = failure(errno);
    if (!written) {
        ::unlink(pattern.c_str());
        return written;
    }
    FileDescriptor opened(::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    return opened ? flush(opened.get()) : failure(errno);
}

Result<std::optional<Bytes>> readWhole(const std::filesystem::path& path, std::size_t limit) {
    FileDescriptor file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file) {
        if (errno == ENOENT || errno == ENOTDIR) return std::nullopt;
        return failure(errno);
    }
    struct stat status{};
    if (::fstat(file.get(), &status) != 0) return failure(errno);
    if (!S_ISREG(status.st_mode)) return failure(EINVAL);
    auto bytes = readUpTo(file.get(), limit);
    if (!bytes) return std::unexpected(bytes.error());
    return std::optional(*std::move(bytes));
}

Result<void> makePrivateFolders(const std::filesystem::path& folder) {
    if (folder.empty() || ::access(folder.c_str(), F_OK) == 0) return {};
    if (auto made = makePrivateFolders(folder.parent_path()); !made) return made;
    if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) return failure(errno);
    return {};
}

Result<std::filesystem::path> setAside(const std::filesystem::path& path) {
    constexpr int mostCopies = 1000;
    for (int copy = 1; copy <= mostCopies; ++copy) {
        auto name = path.string() + ".damaged" + (copy == 1 ? "" : "-" + std::to_string(copy));
        // link(2) fails when the name is taken, so nothing that was set aside before is lost.
        if (::link(path.c_str(), name.c_str()) == 0) {
            if (::unlink(path.c_str()) != 0) return failure(errno);
            return std::filesystem::path(name);
        }
        if (errno != EEXIST) return failure(errno);
    }
    return failure(EEXIST);
}

} // namespace morvex
