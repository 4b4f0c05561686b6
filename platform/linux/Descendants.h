#pragma once

#include <compare>
#include <set>
#include <sys/types.h>

namespace morvex {

/// What the leader of a session has started: all processes of its session, and their descendants as long as
/// the chain of parents is alive. A process in its own session whose parent has ended is not found. Use from
/// one thread at a time. The leader may end meanwhile, but its process id must not be reused.
class Descendants {
  public:
    explicit Descendants(pid_t leader) : leader_(leader) {}

    /// Signals the leader, all its descendants, and all processes that an earlier call reached. They are
    /// stopped first, so that none starts another process unnoticed, and continued afterwards, including
    /// those that were stopped before. If something else continues them meanwhile, the signal is sent
    /// nevertheless.
    void signal(int number);

    /// The start time, in ticks since boot, distinguishes a process from a later one with the same id.
    struct Process {
        pid_t number = 0;
        unsigned long long start = 0;
        auto operator<=>(const Process&) const = default;
    };

  private:
    bool stopThoseThatRun();
    void send(int number) const;

    pid_t leader_;
    std::set<Process> strayed_; ///< those that left the leader's group
};

} // namespace morvex
