#include "relay/OriginLimit.h"

#include <algorithm>

namespace morvex {

OriginLimit::OriginLimit(std::size_t most, RateLimit::Span span)
    : circles_{{{{32, 64}, {most, span}}, {{28, 48}, {2 * most, span}}, {{24, 32}, {8 * most, span}}}} {}

bool OriginLimit::hasRoom(const Origin& origin, Moment now, std::size_t cost) const {
    return !origin.isLimited() || std::ranges::all_of(circles_, [&](const Circle& circle) {
        return circle.limit.hasRoom(origin.within(circle.range), now, cost);
    });
}

void OriginLimit::charge(const Origin& origin, Moment now, std::size_t cost) {
    if (!origin.isLimited()) return;
    for (auto& circle : circles_) circle.limit.charge(origin.within(circle.range), now, cost);
}

bool OriginLimit::admits(const Origin& origin, Moment now) {
    if (!hasRoom(origin, now)) return false;
    charge(origin, now);
    return true;
}

} // namespace morvex
