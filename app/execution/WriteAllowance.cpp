#include "app/execution/WriteAllowance.h"

#include <algorithm>
#include <chrono>

namespace morvex {

namespace {

constexpr Clock::Duration minute = std::chrono::minutes(1);
constexpr Clock::Duration hour = std::chrono::hours(1);

} // namespace

bool WriteAllowance::take(std::size_t bytes) {
    forgetOld();
    if (bytes > limit_ - taken_) return false;
    const auto now = clock_.sinceBoot();
    const auto begin = now - now % minute;
    if (minutes_.empty() || minutes_.back().begin != begin) minutes_.push_back({begin, 0});
    minutes_.back().bytes += bytes;
    taken_ += bytes;
    return true;
}

void WriteAllowance::giveBack(std::size_t bytes) {
    forgetOld();
    // A write that took an hour is no longer counted.
    if (minutes_.empty()) return;
    const auto held = std::min(bytes, minutes_.back().bytes);
    minutes_.back().bytes -= held;
    taken_ -= held;
}

void WriteAllowance::forgetOld() {
    const auto now = clock_.sinceBoot();
    for (; !minutes_.empty() && now - minutes_.front().begin >= hour + minute; minutes_.pop_front())
        taken_ -= minutes_.front().bytes;
}

} // namespace morvex
