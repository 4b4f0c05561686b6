#include "platform/linux/CallDeadline.h"

#include <algorithm>

namespace morvex {

CallDeadline::CallDeadline(std::chrono::milliseconds limit)
    : end_(Time::now() + limit),
      cancellable_(g_cancellable_new()),
      watcher_([this](const std::stop_token& stop) { watch(stop); }) {}

std::chrono::milliseconds CallDeadline::remaining() const {
    auto left = std::chrono::ceil<std::chrono::milliseconds>(end_ - Time::now());
    return std::max(left, std::chrono::milliseconds(0));
}

void CallDeadline::watch(const std::stop_token& stop) {
    std::unique_lock lock(mutex_);
    ended_.wait_until(lock, stop, end_, [] { return false; });
    if (!stop.stop_requested()) g_cancellable_cancel(cancellable_.get());
}

} // namespace morvex
