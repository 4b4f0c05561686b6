#pragma once

#include "foundation/TimeZone.h"
#include "phone/Terminal.h"
#include "shared/wire/MacStatus.h"

#include <string>
#include <vector>

namespace morvex {

/// The Mac's status, one labelled line per item. Times are those of `zone`.
std::vector<StyledLine> statusLines(const MacStatus& status, Date now, const TimeZone& zone);

/// A table of the tools under a heading.
std::vector<StyledLine> toolLines(const std::vector<ToolDescriptor>& tools);

/// The tools as one JSON array.
std::string toolsJson(const std::vector<ToolDescriptor>& tools);

/// The time of day in `zone`, such as "14:03:59".
std::string timeOfDay(Date date, const TimeZone& zone);

} // namespace morvex
