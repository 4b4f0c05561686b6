#pragma once

#include "foundation/Clock.h"

#include <map>
#include <mutex>
#include <optional>
#include <vector>

namespace morvex {

/// A clock that stands still until a test moves it. Safe from any thread.
class ManualClock final : public Clock {
  public:
    explicit ManualClock(Date now = dateFromSeconds(1'800'000'000)) : now_(now) {}

    [[nodiscard]] Date now() const override;
    [[nodiscard]] Duration sinceBoot() const override;
    TimerId at(Duration when, Job callback) override;
    void forget(TimerId timer) override;

    /// Advances the time and calls the due timers in the order of their times.
    void advance(Duration by);

    /// Changes the wall clock alone, as a user or a time server does.
    void setWallClock(Date now);

    [[nodiscard]] std::size_t waiting() const;
    /// Time until the next timer; tests check it to see which wait was chosen.
    [[nodiscard]] std::optional<Duration> untilNext() const;

  private:
    std::vector<Job> takeDue();

    mutable std::mutex mutex_;
    Date now_;
    Duration elapsed_{0};
    TimerId lastId_ = 0;
    std::map<std::pair<Duration, TimerId>, Job> timers_;
};

} // namespace morvex
