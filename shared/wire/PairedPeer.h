#pragma once

#include "shared/base/Date.h"
#include "shared/wire/Codec.h"
#include "shared/wire/DeviceRole.h"
#include "shared/wire/Identifiers.h"
#include "shared/wire/PublicKeys.h"

#include <string>

namespace morvex {

/// The other device of the pair, as stored after the user confirmed the pairing.
struct PairedPeer {
    PairID pairID;
    std::string relayURL;
    DeviceID deviceID;
    SigningPublicKey podpisovyKlic;
    AgreementPublicKey dohodovyKlic;
    DeviceRole role = DeviceRole::phone;
    Date potvrzeno; ///< when the user confirmed

    bool operator==(const PairedPeer&) const = default;
};

extern template struct Codec<PairedPeer>;

} // namespace morvex
