#pragma once

#include "shared/trust/PrivateKey.h"
#include "shared/trust/SymmetricKey.h"
#include "shared/wire/Identifiers.h"
#include "shared/wire/PairedPeer.h"

namespace morvex {

/// Who this device is: its two long-term private keys, held in memory, and what follows from them. It never
/// changes once made, so one object can serve several threads as `std::shared_ptr<const DeviceIdentity>`.
class DeviceIdentity {
  public:
    static DeviceIdentity generate();
    DeviceIdentity(SigningPrivateKey podpisovy, AgreementPrivateKey dohodovy);

    [[nodiscard]] const SigningPrivateKey& podpisovy() const { return podpisovy_; }

    [[nodiscard]] const AgreementPrivateKey& dohodovy() const { return dohodovy_; }

    [[nodiscard]] const SigningPublicKey& signingKey() const { return podpisovy_.publicKey(); }

    [[nodiscard]] const AgreementPublicKey& agreementKey() const { return dohodovy_.publicKey(); }

    [[nodiscard]] const DeviceID& deviceID() const { return deviceID_; }

    /// The Ed25519 signature, 64 bytes.
    [[nodiscard]] Bytes sign(ByteView message) const { return podpisovy_.sign(message); }

    /// The key that only this device and the peer can reach. Fails with `CryptoError` for an unsafe key of
    /// the peer.
    [[nodiscard]] Result<PairKey> pairKey(const PairedPeer& peer) const;

  private:
    SigningPrivateKey podpisovy_;
    AgreementPrivateKey dohodovy_;
    DeviceID deviceID_;
};

} // namespace morvex
