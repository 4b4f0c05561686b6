#pragma once

#include <compare>
#include <set>
#include <sys/types.h>

namespace morvex {

/// What the leader of a session has started: all of its session, and what descends from these as far as the
/// line of living parents leads. A process in a session of its own whose parent has ended is not found. One
/// thread at a time; meanwhile the leader may end, but its number is not given to another.
class Descendants {
  public:
    explicit Descendants(pid_t leader) : leader_(leader) {}

    /// Signals the leader and all of them, and whatever an earlier call has reached. They are stopped before,
    /// so that none starts another one out of sight, and continued afterwards, also one that was stopped
    /// already. Should somebody else continue them meanwhile, the signal goes out nevertheless.
    void signal(int number);

    /// The start, in ticks since boot, tells one that has ended from the next of its number.
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
