#pragma once

#include "shared/base/Date.h"
#include "shared/base/Uuid.h"
#include "shared/wire/ArchivedList.h"

#include <cstdint>
#include <string>
#include <vector>

namespace morvex {

/// A summary of a period, made on the phone.
struct MorvexSummary {
    Uuid id;
    std::string title;
    std::string body;
    Date createdAt;
    Date periodStart;
    Date periodEnd;
    std::vector<std::string> sources; ///< what it was made from
    std::uint64_t revision = 0;

    bool operator==(const MorvexSummary&) const = default;
};

extern template struct Codec<MorvexSummary>;
extern template struct Codec<ArchivedList<MorvexSummary>>;

} // namespace morvex
