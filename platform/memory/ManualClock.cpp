#include "platform/memory/ManualClock.h"

#include <utility>

namespace morvex {

Date ManualClock::now() const {
    std::lock_guard lock(mutex_);
    return now_;
}

Clock::Duration ManualClock::sinceBoot() const {
    std::lock_guard lock(mutex_);
    return elapsed_;
}

Clock::TimerId ManualClock::at(Duration when, Job callback) {
    TimerId id = 0;
    {
        std::lock_guard lock(mutex_);
        id = ++lastId_;
        if (when > elapsed_) {
            timers_.emplace(std::pair(when, id), std::move(callback));
            return id;
        }
    }
    callback();
    return id;
}

void ManualClock::forget(TimerId timer) {
    std::lock_guard lock(mutex_);
    std::erase_if(timers_, [timer](const auto& entry) { return entry.first.second == timer; });
}

void ManualClock::advance(Duration by) {
    {
        std::lock_guard lock(mutex_);
        elapsed_ += by;
        now_ += std::chrono::duration_cast<Date::duration>(by);
    }
    for (auto& job : takeDue()) job();
}

void ManualClock::setWallClock(Date now) {
    std::lock_guard lock(mutex_);
    now_ = now;
}

std::size_t ManualClock::waiting() const {
    std::lock_guard lock(mutex_);
    return timers_.size();
}

std::optional<Clock::Duration> ManualClock::untilNext() const {
    std::lock_guard lock(mutex_);
    if (timers_.empty()) return std::nullopt;
    return timers_.begin()->first.first - elapsed_;
}

std::vector<Job> ManualClock::takeDue() {
    std::lock_guard lock(mutex_);
    std::vector<Job> due;
    while (!timers_.empty() && timers_.begin()->first.first <= elapsed_) {
        due.push_back(std::move(timers_.begin()->second));
        timers_.erase(timers_.begin());
    }
    return due;
}

} // namespace morvex
