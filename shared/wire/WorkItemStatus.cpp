#include "shared/wire/WorkItemStatus.h"

#include "shared/base/Require.h"
#include "shared/wire/RawValues.h"

namespace morvex {

template <>
inline constexpr std::array<std::string_view, 8> rawValues<WorkItemStatus::Case>{
    "captured",  "in_progress", "waiting_for_mac", "waiting_for_approval",
    "completed", "failed",      "cancelled",       "interrupted"};

WorkItemStatus::WorkItemStatus(Case known) {
    vyzaduj(known != unknown, "an unknown status has a word of its own");
    rawValue = morvex::rawValue(known);
}

WorkItemStatus::Case WorkItemStatus::kind() const {
    return fromRawValue<Case>(rawValue).value_or(unknown);
}

} // namespace morvex
