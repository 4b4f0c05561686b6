#pragma once

#include <string>
#include <string_view>

namespace morvex {

/// Replaces control characters, line separators and direction marks by U+FFFD; "
/// " and tabs stay. Text from outside can then neither move the cursor nor look like another text.
std::string printable(std::string_view text);

/// Like `printable`, for text that must stay on one line, so that it cannot pass for a line of the program
/// either.
std::string printableLine(std::string_view text);

} // namespace morvex
