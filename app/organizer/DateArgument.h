#pragma once

#include "foundation/TimeZone.h"
#include "shared/base/Date.h"

#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// What a day without a time of day means.
enum class BareDay {
    itsStart,
    itsEnd, ///< the start of the next day, so that a range that ends with the day covers it
};

/// Reads a date in the argument of a tool: "2026-03-14T10:00:00+02:00", also with a fraction and with the
/// offset "Z", or the bare day "2026-03-14" of this zone. Nothing for all else, for what the calendar or the
/// clock does not have, and for moments outside the years 0 to 9999 of UTC.
std::optional<Date> parseDate(std::string_view text, BareDay bareDay, const TimeZone& zone);

/// "2026-03-14T10:00:00+01:00", in this zone, with "Z" where it is at UTC. A moment outside the years 0 to
/// 9999 is shown as the nearest one that has a form.
std::string formatLocalDate(Date date, const TimeZone& zone);

/// `formatDate` for a moment of any size, which is shown as the nearest one that has a form.
std::string formatAnyDate(Date date);

} // namespace morvex
