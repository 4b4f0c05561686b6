#pragma once

#include "platform/posix/base/FileDescriptor.h"
#include "shared/base/Error.h"

#include <sys/types.h>

namespace morvex {

/// Ends the outside programs that still run when this program ends abnormally: by SIGKILL, a crash or a lack
/// of memory. A separate process waits on a socket whose other end the system closes when this program ends
/// in any way; then it kills the reported groups and exits. `begun` and `ended` are safe from any thread.
class OrphanWatch {
  public:
    /// Forks, so call it before the program starts its first thread. Fails with the words of the system.
    static Result<OrphanWatch> create();

    /// Ends the watch process, which treats this like the end of the program, and waits for it.
    ~OrphanWatch();
    OrphanWatch(OrphanWatch&& other) noexcept;
    OrphanWatch& operator=(OrphanWatch&&) = delete;

    /// Reports that a group's leader was started.
    void begun(pid_t leader);

    /// Ends the watch over a group. Must be called before the leader is reaped, since its process id may be
    /// reused afterwards.
    void ended(pid_t leader);

  private:
    OrphanWatch(FileDescriptor told, pid_t watcher) : told_(std::move(told)), watcher_(watcher) {}

    void tell(pid_t number);

    FileDescriptor told_;
    pid_t watcher_;
};

} // namespace morvex
