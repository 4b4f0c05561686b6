#pragma once

#include "phone/Terminal.h"
#include "shared/wire/MacStatus.h"

#include <string>
#include <vector>

namespace morvex {

/// What the Mac told about itself, a labelled line each.
std::vector<StyledLine> statusLines(const MacStatus& status, Date now);

/// A table of the tools under a heading.
std::vector<StyledLine> toolLines(const std::vector<ToolDescriptor>& tools);

/// The tools as one JSON array.
std::string toolsJson(const std::vector<ToolDescriptor>& tools);

/// "14:03:59" by the clock of this place.
std::string timeOfDay(Date date);

} // namespace morvex
