#pragma once

#include "phone/Terminal.h"
#include "shared/wire/CompanionRecords.h"

#include <string>
#include <vector>

namespace morvex {

/// What this phone has told the Mac to prefer, a labelled line each.
std::vector<StyledLine> preferencesLines(const CompanionPreferences& preferences);

/// The custom apps of this phone, a line each, never a token.
std::vector<StyledLine> appLines(const std::vector<CompanionCustomApp>& apps);

/// The same as one JSON array.
std::string appsJson(const std::vector<CompanionCustomApp>& apps);

} // namespace morvex
