#pragma once

#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// A name that somebody may ask for, and the file in the allowed folder that it means; nothing when it is to
/// be refused.
struct NaughtyName {
    std::string asked;
    std::optional<std::string> file;
};

/// Names that programs stumble over: controls, directions of writing, blanks, dots, quotes, encodings, words
/// with a meaning elsewhere, and bytes that are no text.
std::vector<NaughtyName> naughtyNames();

} // namespace morvex
