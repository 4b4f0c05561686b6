#pragma once

#include "phone/Terminal.h"
#include "shared/wire/WorkItem.h"

#include <string>
#include <vector>

namespace morvex {

/// Where a task stands, in one line whatever the agent said.
std::string taskText(const WorkItem& item);

/// The same with who works on it, and with the id that continues it.
std::vector<StyledLine> taskLines(const WorkItem& item);

} // namespace morvex
