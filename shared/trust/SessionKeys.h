#pragma once

#include "shared/trust/PrivateKey.h"
#include "shared/trust/SymmetricKey.h"
#include "shared/wire/DeviceRole.h"

namespace morvex {

/// The two direction keys of a session, as one device sees them: its sending key is the other's receiving
/// key. Nobody without the pair key can reach them, even with both ephemeral keys.
struct SessionKeys {
    ChannelKey odesilaci;
    ChannelKey prijimaci;

    /// Fails with `CryptoError` for an unsafe key of the peer.
    static Result<SessionKeys> derive(const PairKey& pairKey, const EphemeralPrivateKey& mujEfemerni,
                                      const AgreementPublicKey& peerEphemeral, DeviceRole role);
};

} // namespace morvex
