#include "platform/linux/CallDeadline.h"

#include <algorithm>
#include <utility>

namespace morvex {

namespace {

constexpr std::chrono::seconds leftWhenEnding{2};

} // namespace

CallDeadline::CallDeadline(std::chrono::milliseconds limit, std::stop_token ending)
    : end_(Time::now() + limit),
      cancellable_(g_cancellable_new()),
      ending_(std::move(ending), [this] { hurry(); }),
      watcher_([this](const std::stop_token& stop) { watch(stop); }) {}

std::chrono::milliseconds CallDeadline::remaining() const {
    std::lock_guard lock(mutex_);
    auto left = std::chrono::ceil<std::chrono::milliseconds>(end_ - Time::now());
    return std::max(left, std::chrono::milliseconds(0));
}

void CallDeadline::hurry() {
    std::lock_guard lock(mutex_);
    end_ = std::min<Time::time_point>(end_, Time::now() + leftWhenEnding);
    ended_.notify_all();
}

void CallDeadline::watch(const std::stop_token& stop) {
    std::unique_lock lock(mutex_);
    while (!stop.stop_requested() && Time::now() < end_) {
        // A copy, since `wait_until` also reads the time without the lock.
        const auto known = end_;
        ended_.wait_until(lock, stop, known, [this, known] { return end_ != known; });
    }
    lock.unlock();
    if (!stop.stop_requested()) g_cancellable_cancel(cancellable_.get());
}

} // namespace morvex
