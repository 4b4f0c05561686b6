#include "foundation/ArchiveFile.h"

#include "foundation/AtomicFile.h"
#include "foundation/SystemError.h"

#include <cerrno>

namespace morvex {

Result<std::optional<Bytes>> ArchiveFile::read() {
    auto bytes = readWhole(path_, limit_);
    isDamaged_ = !bytes.has_value();
    return bytes;
}

Result<void> ArchiveFile::save(ByteView bytes) {
    if (bytes.size() > limit_) return fail(SystemError{EFBIG});
    if (auto aside = putDamagedAside(); !aside) return aside;
    return writeAtomically(path_, bytes);
}

Result<void> ArchiveFile::putDamagedAside() {
    if (!isDamaged_) return {};
    auto moved = setAside(path_);
    if (!moved) {
        const auto* cause = moved.error().as<SystemError>();
        const bool isGone = cause && cause->code == ENOENT;
        if (!isGone) return fail(moved.error());
    }
    isDamaged_ = false;
    return {};
}

} // namespace morvex
