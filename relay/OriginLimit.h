#pragma once

#include "relay/Origin.h"
#include "relay/RateLimit.h"

#include <array>
#include <cstddef>

namespace morvex {

/// A limit for one address, combined with multiples of it for the larger ranges around the address, since the
/// owner of one IPv6 address has any number of them. One thread.
class OriginLimit {
  public:
    using Moment = RateLimit::Moment;

    OriginLimit(std::size_t most, RateLimit::Span span);

    [[nodiscard]] bool hasRoom(const Origin& origin, Moment now, std::size_t cost = 1) const;
    void charge(const Origin& origin, Moment now, std::size_t cost = 1);
    /// Counts one if there is room. Refused attempts are not counted, since they would use up the neighbours'
    /// share.
    bool admits(const Origin& origin, Moment now);

  private:
    struct Circle {
        Origin::Range range;
        RateLimit limit;
    };

    std::array<Circle, 3> circles_; ///< each range contains the one before it
};

} // namespace morvex
