#pragma once

#include "shared/base/Date.h"
#include "shared/wire/Identifiers.h"

#include <string>

namespace morvex {

/// The text that the signature of a revocation request covers. The device `by` signs it and the relay checks
/// it; fractions of a second in `signedAt` are ignored.
std::string revocationSignedText(const PairID& pair, const DeviceID& target, const DeviceID& by,
                                 Date signedAt);

} // namespace morvex
