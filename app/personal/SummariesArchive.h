#pragma once

#include "shared/wire/MorvexSummary.h"

#include <cstdint>

namespace morvex {

/// The file of the summaries store.
struct SummariesArchive {
    std::int64_t schemaVersion = 1;
    ArchivedList<MorvexSummary> summaries; ///< newest first

    bool operator==(const SummariesArchive&) const = default;
};

extern template struct Codec<SummariesArchive>;

} // namespace morvex
