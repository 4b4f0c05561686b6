#pragma once

#include "shared/wire/Codec.h"
#include "shared/wire/Identifiers.h"
#include "shared/wire/ProtocolVersion.h"
#include "shared/wire/PublicKeys.h"

#include <string>

namespace morvex {

/// What the QR code carries from the computer to the phone. Its JSON has the keys in sorted order.
struct PairingBundle {
    ProtocolVersion v;
    std::string relayURL;
    PairID pairID;
    std::string pairingToken; ///< secret; good for one join
    SigningPublicKey signingKey;
    AgreementPublicKey agreementKey;

    bool operator==(const PairingBundle&) const = default;
};

extern template struct Codec<PairingBundle>;

} // namespace morvex
