#include "relay/RateLimit.h"

namespace morvex {

namespace {

constexpr std::chrono::minutes span{1};

} // namespace

bool RateLimit::admits(std::string_view address, Moment now) {
    makeRoom(now);
    auto& minute = minutes_.try_emplace(std::string{address}, Minute{now}).first->second;
    if (now - minute.start >= span) minute = {now};
    if (minute.calls == perMinute_) return false;
    ++minute.calls;
    return true;
}

void RateLimit::makeRoom(Moment now) {
    if (minutes_.size() < maxAddresses) return;
    std::erase_if(minutes_, [&](const auto& entry) { return now - entry.second.start >= span; });
    if (minutes_.size() >= maxAddresses) minutes_.clear();
}

} // namespace morvex
