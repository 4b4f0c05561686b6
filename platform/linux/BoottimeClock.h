#pragma once

#include "foundation/Clock.h"
#include "platform/posix/base/FileDescriptor.h"
#include "shared/base/Error.h"

#include <map>
#include <memory>
#include <mutex>
#include <optional>
#include <thread>
#include <utility>

namespace morvex {

/// The system's time. Callbacks run one after another on a thread of this clock, in the order of their times;
/// those for the same time in the order of the `at` calls. Safe from any thread; a callback must not destroy
/// the clock. Callbacks still waiting at its destruction are never called.
class BoottimeClock final : public Clock {
  public:
    static Result<std::unique_ptr<BoottimeClock>> create();
    ~BoottimeClock() override;

    [[nodiscard]] Date now() const override;
    [[nodiscard]] Duration sinceBoot() const override;
    TimerId at(Duration when, Job callback) override;
    void forget(TimerId timer) override;

  private:
    using Key = std::pair<Duration, TimerId>;

    BoottimeClock(FileDescriptor timer, FileDescriptor end);

    void run();
    std::optional<Job> takeDue();
    void wakeAt(Duration when);

    FileDescriptor timer_;
    FileDescriptor end_;
    std::mutex mutex_;
    TimerId lastId_ = 0;
    std::map<Key, Job> waiting_;
    std::thread thread_;
};

} // namespace morvex
