#pragma once

#include "phone/Terminal.h"
#include "shared/wire/MorvexNote.h"
#include "shared/wire/MorvexSummary.h"

#include <string>
#include <vector>

namespace morvex {

/// A record for people: its title with date and remark, and below it the text.
std::vector<StyledLine> recordLines(const MorvexNote& note, const std::string& remark = {});
std::vector<StyledLine> recordLines(const MorvexSummary& summary, const std::string& remark = {});

} // namespace morvex
