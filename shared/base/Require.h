#pragma once

#include <source_location>

namespace morvex {

/// Ends the process with `text`, which says what is wrong, when an assumption of this program does not hold.
/// Never use it to check outside data.
void require(bool condition, const char* text, std::source_location where = std::source_location::current());

} // namespace morvex
