#include "platform/linux/LockFileInstance.h"

#include "foundation/AtomicFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <utility>

namespace morvex {

bool LockFileInstance::claim() {
    if (lock_) return true;
    if (!makePrivateFolders(path_.parent_path())) return false;
    FileDescriptor file(::open(path_.c_str(), O_RDWR | O_CREAT | O_CLOEXEC | O_NOFOLLOW | O_NONBLOCK, 0600));
    if (!file || ::flock(file.get(), LOCK_EX | LOCK_NB) != 0) return false;
    lock_ = std::move(file);
    return true;
}

} // namespace morvex
