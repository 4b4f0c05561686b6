#pragma once

#include "platform/posix/base/FileDescriptor.h"
#include "shared/base/Error.h"

#include <sys/types.h>

namespace morvex {

/// Ends the outside programs that still run when this one ends without a word: by SIGKILL, a crash, a lack of
/// memory. A process of its own waits at a socket whose other end the system closes for this program, however
/// it ends; then it kills what it was told of and goes. `begun` and `ended` are safe from any thread.
class OrphanWatch {
  public:
    /// Forks, so it comes before the first thread of the program. Fails with the words of the system.
    static Result<OrphanWatch> create();

    /// Lets the watch end, as the end of the program does, and waits for it.
    ~OrphanWatch();
    OrphanWatch(OrphanWatch&& other) noexcept;
    OrphanWatch& operator=(OrphanWatch&&) = delete;

    /// The leader of a group runs.
    void begun(pid_t leader);

    /// Its group is nobody's concern any more. To be told before the leader is reaped: until then its number
    /// is its own.
    void ended(pid_t leader);

  private:
    OrphanWatch(FileDescriptor told, pid_t watcher) : told_(std::move(told)), watcher_(watcher) {}

    void tell(pid_t number);

    FileDescriptor told_;
    pid_t watcher_;
};

} // namespace morvex
