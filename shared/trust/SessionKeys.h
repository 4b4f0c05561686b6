#pragma once

#include "shared/trust/PrivateKey.h"
#include "shared/trust/SymmetricKey.h"
#include "shared/wire/DeviceRole.h"

namespace morvex {

/// The two direction keys of a session from this device's point of view: its sending key is the other
/// device's receiving key. Nobody can derive them without the pair key, even with both ephemeral keys.
struct SessionKeys {
    ChannelKey odesilaci;
    ChannelKey prijimaci;

    /// Fails with `CryptoError` if the peer's key is unsafe.
    static Result<SessionKeys> derive(const PairKey& pairKey, const EphemeralPrivateKey& mujEfemerni,
                                      const AgreementPublicKey& peerEphemeral, DeviceRole role);
};

} // namespace morvex
