#include "shared/trust/Revocation.h"

namespace morvex {

std::string revocationSignedText(const PairID& pair, const DeviceID& target, const DeviceID& by,
                                 Date signedAt) {
    return "revoke|" + pair.rawValue + "|" + target.rawValue + "|" + by.rawValue + "|" +
           std::to_string(wholeSeconds(signedAt));
}

} // namespace morvex
