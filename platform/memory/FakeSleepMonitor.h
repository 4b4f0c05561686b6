#pragma once

#include "platform/ports/SleepMonitor.h"

#include <utility>

namespace morvex {

/// A computer that a test puts to sleep and wakes up.
class FakeSleepMonitor final : public SleepMonitor {
  public:
    void watch(Watcher watcher) override { watcher_ = std::move(watcher); }

    void unwatch() override { watcher_ = {}; }

    void letSleep() override { ++allowed; }

    void fallAsleep() const { watcher_.willSleep(); }

    void wake() const { watcher_.didWake(); }

    [[nodiscard]] bool isWatched() const { return watcher_.willSleep && watcher_.didWake; }

    int allowed = 0; ///< number of `letSleep` calls

  private:
    Watcher watcher_;
};

} // namespace morvex
