#pragma once

#include "foundation/TimeZone.h"
#include "phone/Inbox.h"
#include "phone/Terminal.h"

#include <optional>
#include <string>

namespace morvex {

/// One line about an event of the link, with its time in `zone`. Nothing for what the user typed.
std::optional<StyledLine> eventLine(const Inbox::Event& event, Date now, const TimeZone& zone);

/// The same as one JSON object: `event` is "state", "ready", "error" or "message".
std::optional<std::string> eventJson(const Inbox::Event& event, Date now);

/// The approval request, for the user who decides.
std::vector<StyledLine> approvalLines(const ApprovalRequest& request, Date now);

} // namespace morvex
