#pragma once

#include "phone/Terminal.h"
#include "shared/wire/WorkItem.h"

#include <string>
#include <vector>

namespace morvex {

/// The state of a task in one line, even if the agent's text has several.
std::string taskText(const WorkItem& item);

/// The same with the agent that works on it, and the id to continue it.
std::vector<StyledLine> taskLines(const WorkItem& item);

} // namespace morvex
