#pragma once

#include "shared/base/Date.h"
#include "shared/wire/Identifiers.h"

#include <string>

namespace morvex {

/// What the signature of a request to revoke a device covers. The device `by` signs it and the relay checks
/// it; the part of `signedAt` below a second does not count.
std::string revocationSignedText(const PairID& pair, const DeviceID& target, const DeviceID& by,
                                 Date signedAt);

} // namespace morvex
