#pragma once

#include <map>
#include <string>
#include <sys/types.h>

namespace morvex {

/// The living processes whose environment has this variable, by its value: whatever descends from a child
/// that was started with it, wherever it went.
std::multimap<std::string, pid_t> processesMarked(const std::string& variable);

/// Whether this process has children, dead ones that nobody reaped among them.
bool hasChildren();

} // namespace morvex
