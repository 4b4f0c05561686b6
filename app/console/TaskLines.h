#pragma once

#include "app/agents/AgentRunner.h"
#include "app/agents/HistorieAgentu.h"

#include <string>
#include <vector>

namespace morvex {

/// The agents' tasks for a terminal: one numbered line each, newest first.
std::vector<std::string> taskLines(const HistorieAgentu& historie, const AgentRunner& agenti);

} // namespace morvex
