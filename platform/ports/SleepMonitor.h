#pragma once

#include "foundation/Signal.h"

#include <functional>

namespace morvex {

/// Reports when the computer goes to sleep and when it has woken up. Main thread only.
///
///     (onSleep told -> letSleep, onWake told) ...
///
/// A slot is called as long as its connection lives; on a system without such reports, never.
class SleepMonitor {
  public:
    virtual ~SleepMonitor() = default;

    /// Told before a sleep. Where it can, the system then waits some seconds for `letSleep`, unless nobody is
    /// told.
    [[nodiscard]] virtual Connection onSleep(std::function<void()> slot) = 0;

    /// Told after a sleep, also when the sleep did not take place.
    [[nodiscard]] virtual Connection onWake(std::function<void()> slot) = 0;

    /// Call when the preparations for the sleep are done, once or more, between the two.
    virtual void letSleep() = 0;
};

} // namespace morvex
