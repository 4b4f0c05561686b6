#include "foundation/ArchiveFile.h"

#include "foundation/ProgramLog.h"
#include "platform/posix/base/AtomicFile.h"
#include "shared/base/SystemError.h"

#include <cerrno>

namespace morvex {

Result<std::optional<Bytes>> ArchiveFile::read() {
    auto bytes = readWhole(path_, limit_);
    const int code = bytes ? 0 : systemCode(bytes.error());
    isDamaged_ = code == EFBIG || code == EINVAL;
    unread_.reset();
    if (!bytes) logCause("reading a store", bytes.error());
    if (!bytes && !isDamaged_) unread_ = bytes.error();
    return bytes;
}

Result<void> ArchiveFile::save(ByteView bytes) {
    if (bytes.size() > limit_) return fail(SystemError{EFBIG});
    if (unread_) return fail(*unread_);
    if (auto aside = putDamagedAside(); !aside) return aside;
    return writeAtomically(path_, bytes);
}

Result<void> ArchiveFile::putDamagedAside() {
    if (!isDamaged_) return {};
    auto moved = setAside(path_);
    if (!moved && systemCode(moved.error()) != ENOENT) return fail(moved.error());
    isDamaged_ = false;
    return {};
}

} // namespace morvex
