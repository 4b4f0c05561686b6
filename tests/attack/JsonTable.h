#pragma once

#include "shared/wire/DecodeError.h"

#include <string>
#include <variant>
#include <vector>

namespace morvex {

/// A text from outside, and the expected outcome.
struct JsonRow {
    const char* what;
    std::string text;
    /// The reason of its refusal, or the value written again after reading.
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
