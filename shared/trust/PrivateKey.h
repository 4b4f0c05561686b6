#pragma once

#include "shared/trust/Crypto.h"
#include "shared/wire/PublicKeys.h"

namespace morvex {

/// Signs for this device.
struct SigningPurpose {
    using PublicKey = SigningPublicKey;
    static constexpr auto publicKeyOf = &ed25519PublicKey;
    static constexpr bool signs = true;
    static constexpr bool stored = true;
};

/// This device's part of the pair key.
struct StaticAgreementPurpose {
    using PublicKey = AgreementPublicKey;
    static constexpr auto publicKeyOf = &x25519PublicKey;
    static constexpr bool signs = false;
    static constexpr bool stored = true;
};

/// This device's part of one session; never stored.
struct EphemeralAgreementPurpose {
    using PublicKey = AgreementPublicKey;
    static constexpr auto publicKeyOf = &x25519PublicKey;
    static constexpr bool signs = false;
    static constexpr bool stored = false;
};

/// A private key of Curve25519 with its public half. The secret is wiped when the key dies or is moved from;
/// a key can be neither copied, compared nor printed.
template <class Purpose> class PrivateKey {
  public:
    using Public = typename Purpose::PublicKey;

    static PrivateKey generate();
    /// Fails with `KryptoChyba` for another length than 32. The given bytes stay the caller's to wipe.
    static Result<PrivateKey> fromRaw(ByteView raw);

    [[nodiscard]] const Public& publicKey() const { return public_; }

    /// The Ed25519 signature, 64 bytes.
    [[nodiscard]] Bytes sign(ByteView message) const
        requires(Purpose::signs);

    /// X25519. Fails with `CryptoError` for a public key that is not safe.
    [[nodiscard]] Result<SecretKeyBytes> sharedSecret(const AgreementPublicKey& peer) const
        requires(!Purpose::signs);

    /// For the store of this device's keys only.
    [[nodiscard]] SecretKeyBytes exportRaw() const
        requires(Purpose::stored);

  private:
    explicit PrivateKey(SecretKeyBytes secret);

    SecretKeyBytes secret_;
    Public public_;
};

using SigningPrivateKey = PrivateKey<SigningPurpose>;
using AgreementPrivateKey = PrivateKey<StaticAgreementPurpose>;
using EphemeralPrivateKey = PrivateKey<EphemeralAgreementPurpose>;

extern template class PrivateKey<SigningPurpose>;
extern template class PrivateKey<StaticAgreementPurpose>;
extern template class PrivateKey<EphemeralAgreementPurpose>;

} // namespace morvex
