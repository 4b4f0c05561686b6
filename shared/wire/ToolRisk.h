#pragma once

#include "shared/wire/RawValues.h"

#include <string>

namespace morvex {

/// How dangerous a tool is, in ascending order.
enum class ToolRisk { safeRead, guardedRead, localChange, change, forbidden };

template <>
inline constexpr std::array<std::string_view, 5> rawValues<ToolRisk>{"safe_read", "guarded_read",
                                                                     "local_change", "change", "forbidden"};

/// The label shown to the user.
std::string riskLabel(ToolRisk risk);

/// A forbidden tool needs no approval because it is always refused.
constexpr bool requiresApproval(ToolRisk risk) {
    return risk == ToolRisk::change;
}

} // namespace morvex
