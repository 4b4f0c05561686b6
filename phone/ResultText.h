#pragma once

#include "phone/Terminal.h"
#include "shared/wire/MacPayload.h"

#include <string>
#include <vector>

namespace morvex {

/// What a tool answered, for people: "key: value" lines, items behind dashes, longer texts as a block. The
/// key `error` is left to the caller. A result that is no JSON stands as it is.
std::vector<StyledLine> resultLines(const std::string& json);

/// The same as one line of JSON; a result that is no JSON becomes a string.
std::string resultJson(const std::string& json);

/// The sentence of a refusal, if the tool gave one.
std::string errorSentence(const std::string& json);

} // namespace morvex
