#pragma once

#include "phone/Terminal.h"
#include "shared/wire/MacPayload.h"

#include <string>
#include <vector>

namespace morvex {

/// The answer of a tool, for people: "key: value" lines, items with dashes, longer texts as a block. The key
/// `error` is left to the caller. A result that is not JSON is shown unchanged.
std::vector<StyledLine> resultLines(const std::string& json);

/// The same as one line of JSON; a result that is not JSON becomes a string.
std::string resultJson(const std::string& json);

/// The sentence of a refusal, if the tool gave one.
std::string errorSentence(const std::string& json);

} // namespace morvex
