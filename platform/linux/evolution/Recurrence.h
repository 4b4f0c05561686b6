#pragma once

#include "platform/linux/evolution/IcalTime.h"

#include <chrono>
#include <vector>

namespace morvex {

/// One occurrence of a component, moved ones aside.
struct Planned {
    IcalTime start;
    std::chrono::seconds length{0}; ///< by the clock
};

/// Whether it has RRULE, RDATE or none of them.
bool recurs(ICalComponent* component);

/// The occurrences that overlap the time from `from` to `to`, sorted; each series costs 50,000 steps at most.
/// Of several rules the first four count. A rule that is finer than a day and has conditions gives its first
/// occurrence alone, as do rules with conditions that RFC 5545, section 3.3.10 does not allow: the library
/// may look for the next one for hours.
std::vector<Planned> plannedBetween(ICalComponent* component, std::chrono::sys_seconds from,
                                    std::chrono::sys_seconds to, const TimeZone& local,
                                    const ZoneLookup& zones);

/// How long it lasts by the clock.
std::chrono::seconds lengthOf(ICalComponent* component, const IcalTime& start, const TimeZone& local,
                              const ZoneLookup& zones);

} // namespace morvex
