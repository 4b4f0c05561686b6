#pragma once

#include <map>
#include <string>
#include <sys/types.h>

namespace morvex {

/// The living processes whose environment has this variable, with its value: whatever descends from a child
/// that was started with it, wherever it went, as long as it kept its environment.
std::map<pid_t, std::string> processesMarked(const std::string& variable);

} // namespace morvex
