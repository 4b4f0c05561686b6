#include "shared/wire/WorkItemStatus.h"

#include "shared/base/Require.h"
#include "shared/wire/RawValues.h"

#include <utility>

namespace morvex {

template <>
inline constexpr std::array<std::string_view, 8> rawValues<WorkItemStatus::Case>{
    "captured",  "in_progress", "waiting_for_mac", "waiting_for_approval",
    "completed", "failed",      "cancelled",       "interrupted"};

WorkItemStatus::WorkItemStatus(Case known) {
    require(known != unknown, "an unknown status has a word of its own");
    rawValue = morvex::rawValue(known);
}

WorkItemStatus::Case WorkItemStatus::kind() const {
    return fromRawValue<Case>(rawValue).value_or(unknown);
}

std::string_view WorkItemStatus::words() const {
    switch (kind()) {
    case captured:
        return "zapsáno";
    case inProgress:
        return "běží";
    case waitingForMac:
        return "čeká na Mac";
    case waitingForApproval:
        return "čeká na potvrzení";
    case completed:
        return "hotovo";
    case failed:
        return "nepovedlo se";
    case cancelled:
        return "zrušeno";
    case interrupted:
        return "přerušeno";
    case unknown:
        return rawValue;
    }
    std::unreachable();
}

} // namespace morvex
