#pragma once

#include "shared/wire/Codec.h"
#include "shared/wire/Identifiers.h"
#include "shared/wire/ProtocolVersion.h"
#include "shared/wire/PublicKeys.h"

#include <string>

namespace morvex {

/// The content of the QR code that the phone scans from the computer. Its JSON has sorted keys.
struct PairingBundle {
    ProtocolVersion v;
    std::string relayURL;
    PairID pairID;
    std::string pairingToken; ///< secret; valid for one join
    SigningPublicKey signingKey;
    AgreementPublicKey agreementKey;

    bool operator==(const PairingBundle&) const = default;
};

extern template struct Codec<PairingBundle>;

} // namespace morvex
