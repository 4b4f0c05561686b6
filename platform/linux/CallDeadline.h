#pragma once

#include "platform/linux/GLibHandle.h"

#include <chrono>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace morvex {

/// Bounds a row of blocking GLib calls: each takes `cancellable()`, and all of them fail once the time is
/// over. Lives on the stack of the thread that calls. Real time, whatever the program's clock says: the
/// service at the other end may never answer.
class CallDeadline {
  public:
    explicit CallDeadline(std::chrono::milliseconds limit);

    [[nodiscard]] GCancellable* cancellable() const { return cancellable_.get(); }

    [[nodiscard]] bool passed() const { return g_cancellable_is_cancelled(cancellable_.get()) != FALSE; }

    /// Zero once the time is over.
    [[nodiscard]] std::chrono::milliseconds remaining() const;

  private:
    using Time = std::chrono::steady_clock;

    void watch(const std::stop_token& stop);

    Time::time_point end_;
    GLibHandle<GCancellable> cancellable_;
    std::mutex mutex_;
    std::condition_variable_any ended_;
    std::jthread watcher_;
};

} // namespace morvex
