#pragma once

#include "shared/wire/DecodeError.h"

#include <string>
#include <variant>
#include <vector>

namespace morvex {

/// One text from outside, and what has to become of it.
struct JsonRow {
    const char* what;
    std::string text;
    /// Why it is refused, or how the value that was read is written again.
    std::variant<DecodeError::Reason, std::string> wanted;
};

/// Hostile and merely unusual texts, grouped by what they attack.
std::vector<JsonRow> jsonDepths();
std::vector<JsonRow> jsonSizes();
std::vector<JsonRow> jsonKeys();
std::vector<JsonRow> jsonNumbers();
std::vector<JsonRow> jsonStrings();
std::vector<JsonRow> jsonStructures();

} // namespace morvex
