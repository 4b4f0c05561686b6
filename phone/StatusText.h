#pragma once

#include "phone/Terminal.h"
#include "shared/wire/MacStatus.h"

#include <string>
#include <vector>

namespace morvex {

/// The Mac's status, one labelled line per item.
std::vector<StyledLine> statusLines(const MacStatus& status, Date now);

/// A table of the tools under a heading.
std::vector<StyledLine> toolLines(const std::vector<ToolDescriptor>& tools);

/// The tools as one JSON array.
std::string toolsJson(const std::vector<ToolDescriptor>& tools);

/// The local time of day, such as "14:03:59".
std::string timeOfDay(Date date);

} // namespace morvex
