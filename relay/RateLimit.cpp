#include "relay/RateLimit.h"

namespace morvex {

bool RateLimit::hasRoom(const Prefix& range, Moment now, std::size_t cost) const {
    const auto found = byRange_.find(range);
    const bool isCounted = found != byRange_.end() && now - found->second->start < span_;
    return (isCounted ? found->second->used : 0) + cost <= most_;
}

void RateLimit::charge(const Prefix& range, Moment now, std::size_t cost) {
    countOf(range, now)->used += cost;
}

RateLimit::Counts::iterator RateLimit::countOf(const Prefix& range, Moment now) {
    while (!counts_.empty() && now - counts_.front().start >= span_) forgetOldest();
    if (const auto found = byRange_.find(range); found != byRange_.end()) return found->second;
    if (counts_.size() == maxRanges) forgetOldest();
    counts_.push_back({range, now});
    return byRange_[range] = std::prev(counts_.end());
}

void RateLimit::forgetOldest() {
    byRange_.erase(counts_.front().range);
    counts_.pop_front();
}

} // namespace morvex
