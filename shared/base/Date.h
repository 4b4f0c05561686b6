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

/// `2026-11-16T00:45:56Z` (RFC 3339 with the offset `Z` only). The part below a second is dropped (truncated
/// toward zero). Years 0 to 9999; another year is a fault of the caller and ends the process.
std::string formatDate(Date date);

/// Reads exactly the form that `formatDate` writes: fractions, other offsets, blanks, lower-case letters,
/// days that the calendar does not have and second 60 give nothing.
std::optional<Date> parseWireDate(std::string_view text);

/// Seconds since 1 January 2001, with a fraction: the form of dates in the files of the stores.
double secondsSince2001(Date date);

/// Reads what `secondsSince2001` writes, more than 68 years from 2001 to the millisecond. Nothing for a
/// number that is no date of the years 0 to 9999, which alone can be formatted.
std::optional<Date> dateSince2001(double seconds);

} // namespace morvex
