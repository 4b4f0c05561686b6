#include "platform/posix/base/PrivateFile.h"

#include "platform/posix/base/FileDescriptor.h"

#include <cerrno>
#include <fcntl.h>
#include <sys/stat.h>

namespace morvex {

namespace {

std::error_code lastError() {
    return {errno, std::generic_category()};
}

} // namespace

std::error_code makePrivateFile(const std::filesystem::path& file) {
    const FileDescriptor made(::open(file.c_str(), O_RDWR | O_CREAT | O_CLOEXEC, S_IRUSR | S_IWUSR));
    return made ? std::error_code() : lastError();
}

std::error_code makePrivateFolder(const std::filesystem::path& folder) {
    if (::mkdir(folder.c_str(), S_IRWXU) == 0 || errno == EEXIST) return {};
    return lastError();
}

} // namespace morvex
