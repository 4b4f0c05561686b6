#pragma once

#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// A name that a caller may ask for, and the file in the allowed folder that it means; nothing if it must be
/// refused.
struct NaughtyName {
    std::string asked;
    std::optional<std::string> file;
};

/// Names that cause trouble in programs: control characters, directions of writing, blanks, dots, quotes,
/// encodings, words with a special meaning elsewhere, and bytes that are not text.
std::vector<NaughtyName> naughtyNames();

} // namespace morvex
