#pragma once

#include "relay/Origin.h"

#include <chrono>
#include <cstddef>
#include <list>
#include <map>

namespace morvex {

/// A limit per time span for each range of addresses. The span of a range begins with its first charge. Every
/// call takes time logarithmic in the number of remembered ranges. No networking here; one thread.
class RateLimit {
  public:
    using Moment = std::chrono::steady_clock::time_point;
    using Span = std::chrono::steady_clock::duration;

    static constexpr std::size_t maxRanges = 4096;

    RateLimit(std::size_t most, Span span) : most_(most), span_(span) {}

    /// Whether so much more is within the limit now.
    [[nodiscard]] bool hasRoom(const Prefix& range, Moment now, std::size_t cost = 1) const;
    /// When `maxRanges` are remembered, the range whose span began first is forgotten.
    void charge(const Prefix& range, Moment now, std::size_t cost = 1);

  private:
    struct Count {
        Prefix range;
        Moment start;
        std::size_t used = 0;
    };

    using Counts = std::list<Count>;

    Counts::iterator countOf(const Prefix& range, Moment now);
    void forgetOldest();

    std::size_t most_;
    Span span_;
    Counts counts_; ///< ordered by their start
    /// A tree, since an attacker could choose addresses that collide in a hash table.
    std::map<Prefix, Counts::iterator> byRange_;
};

} // namespace morvex
