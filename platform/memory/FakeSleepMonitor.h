#pragma once

#include "platform/ports/SleepMonitor.h"

#include <utility>

namespace morvex {

/// A computer that a test puts to sleep and wakes up.
class FakeSleepMonitor final : public SleepMonitor {
  public:
    Connection onSleep(std::function<void()> slot) override { return sleep_.connect(std::move(slot)); }

    Connection onWake(std::function<void()> slot) override { return wake_.connect(std::move(slot)); }

    void letSleep() override { ++allowed; }

    void fallAsleep() const { sleep_.tell(); }

    void wake() const { wake_.tell(); }

    [[nodiscard]] bool isWatched() const { return sleep_.isHeard() && wake_.isHeard(); }

    int allowed = 0; ///< number of `letSleep` calls

  private:
    Signal<> sleep_;
    Signal<> wake_;
};

} // namespace morvex
