#include "platform/linux/CallDeadline.h"

namespace morvex {

CallDeadline::CallDeadline(std::chrono::milliseconds limit)
    : cancellable_(g_cancellable_new()),
      watcher_([this, limit](const std::stop_token& stop) { watch(stop, limit); }) {}

void CallDeadline::watch(const std::stop_token& stop, std::chrono::milliseconds limit) {
    std::unique_lock lock(mutex_);
    ended_.wait_for(lock, stop, limit, [] { return false; });
    if (!stop.stop_requested()) g_cancellable_cancel(cancellable_.get());
}

} // namespace morvex
