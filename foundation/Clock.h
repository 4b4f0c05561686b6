#pragma once

#include "foundation/Executor.h"
#include "foundation/Task.h"
#include "shared/base/Date.h"

#include <chrono>
#include <cstdint>
#include <stop_token>

namespace morvex {

/// The source of all time, so that tests can control it. Waits include the time for which the computer is
/// suspended.
class Clock {
  public:
    using Duration = std::chrono::nanoseconds;
    using TimerId = std::uint64_t;

    virtual ~Clock() = default;

    /// Wall-clock time.
    [[nodiscard]] virtual Date now() const = 0;

    /// Time since the computer started, including suspension. Never goes back.
    [[nodiscard]] virtual Duration sinceBoot() const = 0;

    /// Calls `callback` once, on any thread, when `sinceBoot()` reaches `when`, or at once if that has
    /// passed. The callback must be short.
    virtual TimerId at(Duration when, Job callback) = 0;

    /// After this call returns the callback will not be called, unless it is running right now.
    virtual void forget(TimerId timer) = 0;
};

/// Waits. True when the whole time has passed, false as soon as `stop` is requested.
Task<bool> sleepFor(Clock& clock, Clock::Duration duration, std::stop_token stop);

} // namespace morvex
