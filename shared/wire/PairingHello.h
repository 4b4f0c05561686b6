#pragma once

#include "shared/base/Bytes.h"
#include "shared/wire/Codec.h"
#include "shared/wire/Identifiers.h"
#include "shared/wire/PublicKeys.h"

namespace morvex {

/// The phone's signed introduction.
struct PairingHello {
    DeviceID device;
    SigningPublicKey signingKey;
    AgreementPublicKey agreementKey;
    Bytes signature;

    bool operator==(const PairingHello&) const = default;
};

extern template struct Codec<PairingHello>;

} // namespace morvex
