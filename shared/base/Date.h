#pragma once

#include "shared/base/Error.h"

#include <chrono>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// A moment of wall-clock time in UTC. In memory it keeps microseconds; on the wire it has whole seconds.
using Date = std::chrono::sys_time<std::chrono::microseconds>;

/// Whole seconds since 1 January 1970, truncated toward zero.
inline std::int64_t wholeSeconds(Date date) {
    return std::chrono::duration_cast<std::chrono::seconds>(date.time_since_epoch()).count();
}

inline Date dateFromSeconds(std::int64_t seconds) {
    return Date{std::chrono::seconds{seconds}};
}

/// `2026-11-16T00:45:56Z` (RFC 3339 with the offset `Z` only), truncated toward zero to whole seconds. The
/// year must be within 0 to 9999; otherwise the process ends, since the caller is wrong.
std::string formatDate(Date date);

/// Reads exactly the form that `formatDate` writes. Returns nothing for fractions, other offsets, blanks,
/// lower-case letters, days that the calendar does not have and second 60.
std::optional<Date> parseWireDate(std::string_view text);

/// Seconds since 1 January 2001, with a fraction: the date format of the store files.
double secondsSince2001(Date date);

/// Reads what `secondsSince2001` writes; dates more than 68 years away from 2001 are rounded to the
/// millisecond. Returns nothing for a date outside the years 0 to 9999, since it could not be formatted.
std::optional<Date> dateSince2001(double seconds);

} // namespace morvex
