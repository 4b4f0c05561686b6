#include "platform/posix/base/FileDescriptor.h"

#include "shared/base/SystemError.h"

#include <algorithm>
#include <cerrno>
#include <unistd.h>

namespace morvex {

FileDescriptor::~FileDescriptor() {
    if (descriptor_ >= 0) ::close(descriptor_);
}

Result<Bytes> readUpTo(int file, std::size_t limit) {
    constexpr std::size_t step = 64 * 1024;
    Bytes bytes;
    for (;;) {
        auto filled = bytes.size();
        bytes.resize(filled + std::min(step, limit + 1 - filled));
        auto got = ::read(file, bytes.data() + filled, bytes.size() - filled);
        if (got < 0 && errno != EINTR) return fail(SystemError{errno});
        bytes.resize(filled + static_cast<std::size_t>(std::max<ssize_t>(got, 0)));
        if (got == 0) return bytes;
        if (bytes.size() > limit) return fail(SystemError{EFBIG});
    }
}

Result<void> writeAll(int file, ByteView bytes) {
    while (!bytes.empty()) {
        auto written = ::write(file, bytes.data(), bytes.size());
        if (written < 0 && errno == EINTR) continue;
        if (written < 0) return fail(SystemError{errno});
        bytes = bytes.subspan(static_cast<std::size_t>(written));
    }
    return {};
}

} // namespace morvex
