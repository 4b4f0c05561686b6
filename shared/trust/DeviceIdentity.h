#pragma once

#include "shared/trust/PrivateKey.h"
#include "shared/trust/SymmetricKey.h"
#include "shared/wire/Identifiers.h"
#include "shared/wire/PairedPeer.h"

namespace morvex {

/// Identifies this device: its two long-term private keys, held in memory, and the values derived from them.
/// It is immutable, so several threads can share one as `std::shared_ptr<const DeviceIdentity>`.
class DeviceIdentity {
  public:
    static DeviceIdentity generate();
    DeviceIdentity(SigningPrivateKey podpisovy, AgreementPrivateKey dohodovy);

    [[nodiscard]] const SigningPrivateKey& podpisovy() const { return podpisovy_; }

    [[nodiscard]] const AgreementPrivateKey& dohodovy() const { return dohodovy_; }

    [[nodiscard]] const SigningPublicKey& signingKey() const { return podpisovy_.publicKey(); }

    [[nodiscard]] const AgreementPublicKey& agreementKey() const { return dohodovy_.publicKey(); }

    [[nodiscard]] const DeviceID& deviceID() const { return deviceID_; }

    /// The Ed25519 signature of `message`, 64 bytes.
    [[nodiscard]] Bytes sign(ByteView message) const { return podpisovy_.sign(message); }

    /// The key that only this device and the peer can derive. Fails with `CryptoError` if the peer's key is
    /// unsafe.
    [[nodiscard]] Result<PairKey> pairKey(const PairedPeer& peer) const;

  private:
    SigningPrivateKey podpisovy_;
    AgreementPrivateKey dohodovy_;
    DeviceID deviceID_;
};

} // namespace morvex
