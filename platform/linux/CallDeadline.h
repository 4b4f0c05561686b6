#pragma once

#include "platform/linux/GLibHandle.h"

#include <chrono>
#include <condition_variable>
#include <functional>
#include <mutex>
#include <stop_token>
#include <thread>

namespace morvex {

/// Limits the total time of a series of blocking GLib calls: each call gets `cancellable()`, and all fail
/// once the time is over. Lives on the stack of the calling thread. Uses real time, not the program's clock,
/// since the service at the other end may never answer.
class CallDeadline {
  public:
    /// After `ending` is requested, at most two seconds are left.
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
    mutable std::mutex mutex_; ///< guards `end_`
    std::condition_variable_any ended_;
    std::stop_callback<std::function<void()>> ending_;
    std::jthread watcher_;
};

} // namespace morvex
