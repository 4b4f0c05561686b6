#pragma once

#include <map>
#include <string>
#include <sys/types.h>

namespace morvex {

/// The living processes whose environment contains this variable, with its value: all descendants of a child
/// that was started with it, wherever they went, as long as they kept their environment.
std::map<pid_t, std::string> processesMarked(const std::string& variable);

} // namespace morvex
