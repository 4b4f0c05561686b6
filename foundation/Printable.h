#pragma once

#include <string>
#include <string_view>

namespace morvex {

/// The text with control characters, separators of lines and marks that turn its direction replaced by
/// U+FFFD; "\n" and tabs stay. What comes from outside can then neither move the cursor nor make a text look
/// like another.
std::string printable(std::string_view text);

/// The same for what has to stay one line: it can then not pass for a line of the program either.
std::string printableLine(std::string_view text);

} // namespace morvex
