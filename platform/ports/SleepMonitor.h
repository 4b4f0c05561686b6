#pragma once

#include <functional>

namespace morvex {

/// Reports when the computer goes to sleep and when it has woken up. Main thread only.
///
///     watch -> (willSleep -> letSleep, didWake) ... -> unwatch
class SleepMonitor {
  public:
    struct Watcher {
        std::function<void()> willSleep; ///< where it can, the system waits some seconds for `letSleep`
        std::function<void()> didWake;   ///< also when the sleep did not take place
    };

    virtual ~SleepMonitor() = default;

    /// Only one watcher at a time; it must outlive the watching. On a system without such reports it is never
    /// called.
    virtual void watch(Watcher watcher) = 0;
    virtual void unwatch() = 0;

    /// Call when the preparations for the sleep are done, once or more, between `willSleep` and `didWake`.
    virtual void letSleep() = 0;
};

} // namespace morvex
