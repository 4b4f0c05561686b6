#pragma once

#include "phone/Terminal.h"
#include "shared/wire/CompanionRecords.h"

#include <string>
#include <vector>

namespace morvex {

/// The preferences that this phone gave the Mac, one labelled line each.
std::vector<StyledLine> preferencesLines(const CompanionPreferences& preferences);

/// The custom apps of this phone, a line each, never a token.
std::vector<StyledLine> appLines(const std::vector<CompanionCustomApp>& apps);

/// The same as one JSON array.
std::string appsJson(const std::vector<CompanionCustomApp>& apps);

} // namespace morvex
