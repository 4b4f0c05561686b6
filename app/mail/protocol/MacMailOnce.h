#pragma once

#include <mutex>
#include <utility>

namespace morvex {

/// Decides a race between a timer and what it limits. From any thread.
class MacMailOnce {
  public:
    /// True for the first caller alone.
    bool first() {
        const std::lock_guard lock(mutex_);
        return !std::exchange(used_, true);
    }

  private:
    std::mutex mutex_;
    bool used_ = false;
};

} // namespace morvex
