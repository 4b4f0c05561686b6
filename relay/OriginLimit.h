#pragma once

#include "relay/Origin.h"
#include "relay/RateLimit.h"

#include <array>
#include <cstddef>

namespace morvex {

/// A limit that one address has for itself, and its neighbours a multiple of it together: whoever has one
/// address of an IPv6 network has any number of them. One thread.
class OriginLimit {
  public:
    using Moment = RateLimit::Moment;

    OriginLimit(std::size_t most, RateLimit::Span span);

    [[nodiscard]] bool hasRoom(const Origin& origin, Moment now, std::size_t cost = 1) const;
    void charge(const Origin& origin, Moment now, std::size_t cost = 1);
    /// Counts one when there is room. What is refused is not counted: it would use up the neighbours' part.
    bool admits(const Origin& origin, Moment now);

  private:
    struct Circle {
        Origin::Range range;
        RateLimit limit;
    };

    std::array<Circle, 3> circles_; ///< each around the one before
};

} // namespace morvex
