#pragma once

#include <source_location>

namespace morvex {

/// Ends the process with `text` when an assumption of this program does not hold; `text` says what is wrong.
/// Never for outside data.
void vyzaduj(bool condition, const char* text, std::source_location where = std::source_location::current());

} // namespace morvex
