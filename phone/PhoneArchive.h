#pragma once

#include "shared/wire/MorvexNote.h"
#include "shared/wire/MorvexSummary.h"

#include <cstdint>
#include <vector>

namespace morvex {

/// What the phone keeps in its file, in the form in which it travels.
struct PhoneArchive {
    std::int64_t schemaVersion = 1;
    std::vector<MorvexNote> notes; ///< deleted ones too
    std::vector<MorvexSummary> summaries;
    std::vector<Uuid> unconfirmed; ///< records that the Mac has not taken in their present revision

    bool operator==(const PhoneArchive&) const = default;
};

extern template struct Codec<PhoneArchive>;

} // namespace morvex
