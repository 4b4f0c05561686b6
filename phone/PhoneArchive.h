#pragma once

#include "shared/wire/MorvexNote.h"
#include "shared/wire/MorvexSummary.h"

#include <cstdint>
#include <vector>

namespace morvex {

/// The content of the phone's file; its records have their wire form.
struct PhoneArchive {
    std::int64_t schemaVersion = 1;
    std::vector<MorvexNote> notes; ///< including deleted ones
    std::vector<MorvexSummary> summaries;
    std::vector<Uuid> unconfirmed; ///< records whose current revision the Mac has not confirmed

    bool operator==(const PhoneArchive&) const = default;
};

extern template struct Codec<PhoneArchive>;

} // namespace morvex
