#pragma once

#include "shared/base/Date.h"
#include "shared/wire/Codec.h"

#include <string>

namespace morvex {

/// One change that waits for the user's decision.
struct ApprovalRequest {
    std::string id;
    std::string tool;
    std::string title;  ///< short, for a screen
    std::string spoken; ///< to be read aloud
    std::string detail;
    Date expiresAt;
    std::string contentHash;

    /// False from the moment `expiresAt` on.
    [[nodiscard]] bool isValid(Date now) const { return now < expiresAt; }

    bool operator==(const ApprovalRequest&) const = default;
};

extern template struct Codec<ApprovalRequest>;

} // namespace morvex
