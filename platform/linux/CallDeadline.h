#pragma once

#include "platform/linux/GLibHandle.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

namespace morvex {

/// Bounds a row of blocking GLib calls: each takes `cancellable()`, and all of them fail once the time is
/// over. Lives on the stack of the thread that calls. Real time, whatever the program's clock says: the
/// service at the other end may never answer.
class CallDeadline {
  public:
    /// Once `ending` is requested two seconds are left at most.
    explicit CallDeadline(std::chrono::milliseconds limit, std::stop_token ending = {});

    [[nodiscard]] GCancellable* cancellable() const { return cancellable_.get(); }

    [[nodiscard]] bool passed() const { return g_cancellable_is_cancelled(cancellable_.get()) != FALSE; }

    /// Zero once the time is over.
    [[nodiscard]] std::chrono::milliseconds remaining() const;

  private:
    using Time = std::chrono::steady_clock;

    void hurry();
    void watch(const std::stop_token& stop);

    Time::time_point end_;
    GLibHandle<GCancellable> cancellable_;
    mutable std::mutex mutex_; ///< of `end_`
    std::condition_variable_any ended_;
    std::stop_callback<std::function<void()>> ending_;
    std::jthread watcher_;
};

} // namespace morvex
