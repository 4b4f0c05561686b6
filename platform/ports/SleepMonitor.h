#pragma once

#include <functional>

namespace morvex {

/// Tells when the computer goes to sleep and when it has woken up. Main thread only.
///
///     watch -> (willSleep -> letSleep, didWake) ... -> unwatch
class SleepMonitor {
  public:
    struct Watcher {
        std::function<void()> willSleep; ///< the system waits some seconds for `letSleep` where it can
        std::function<void()> didWake;   ///< also when the sleep did not come about
    };

    virtual ~SleepMonitor() = default;

    /// One watcher at a time; it outlives the watching. On a system that tells nothing it is never called.
    virtual void watch(Watcher watcher) = 0;
    virtual void unwatch() = 0;

    /// What had to be done before the sleep is done. Called between `willSleep` and `didWake`, once or more.
    virtual void letSleep() = 0;
};

} // namespace morvex
