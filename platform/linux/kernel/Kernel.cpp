#include "platform/posix/base/Kernel.h"

#include <cerrno>
#include <cstdio>
#include <fcntl.h>
#include <malloc.h>
#include <pthread.h>
#include <sys/syscall.h>
#include <unistd.h>

#ifdef SYS_openat2
#include <linux/openat2.h>
#endif

namespace morvex::kernel {

void nameThread(const std::string& name) {
    constexpr std::size_t longest = 15;
    ::pthread_setname_np(::pthread_self(), name.substr(0, longest).c_str());
}

const int passThrough = O_PATH;

int openFolderBeneath(int folder, const char* way) {
#ifdef SYS_openat2
    open_how how{};
    how.flags = O_PATH | O_DIRECTORY | O_CLOEXEC | O_NOFOLLOW;
    how.resolve = RESOLVE_BENEATH | RESOLVE_NO_MAGICLINKS | RESOLVE_NO_SYMLINKS;
    return static_cast<int>(::syscall(SYS_openat2, folder, way, &how, sizeof how));
#else
    errno = ENOSYS;
    return -1;
#endif
}

int renameUnlessTaken(const char* path, const char* name) {
    return ::renameat2(AT_FDCWD, path, AT_FDCWD, name, RENAME_NOREPLACE);
}

void releaseMemory() {
    ::malloc_trim(0);
}

void releaseBlocksFrom(std::size_t bytes) {
    // Left alone, the heap takes each long block that is freed for a reason to keep longer ones.
    ::mallopt(M_MMAP_THRESHOLD, static_cast<int>(bytes));
    ::mallopt(M_TRIM_THRESHOLD, static_cast<int>(4 * bytes));
}

} // namespace morvex::kernel
