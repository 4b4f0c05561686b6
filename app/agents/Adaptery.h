#pragma once

#include "app/agents/AgentAdapter.h"

#include <map>
#include <memory>
#include <string>

namespace morvex {

/// The agents that can be run, by their id.
using Adaptery = std::map<std::string, std::shared_ptr<const AgentAdapter>>;

Adaptery knownAdapters();

} // namespace morvex
