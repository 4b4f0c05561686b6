#pragma once

#include "shared/trust/Crypto.h"
#include "shared/wire/PublicKeys.h"

namespace morvex {

/// Signs in the name of this device.
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

/// This device's share of one session key; never stored.
struct EphemeralAgreementPurpose {
    using PublicKey = AgreementPublicKey;
    static constexpr auto publicKeyOf = &x25519PublicKey;
    static constexpr bool signs = false;
    static constexpr bool stored = false;
};

/// A private key of Curve25519 with its public half. The secret is wiped when the key is destroyed or moved
/// from. A key cannot be copied, compared or printed.
template <class Purpose> class PrivateKey {
  public:
    using Public = typename Purpose::PublicKey;

    static PrivateKey generate();
    /// Fails with `KryptoChyba` unless `raw` has 32 bytes. The caller has to wipe `raw`.
    static Result<PrivateKey> fromRaw(ByteView raw);

    [[nodiscard]] const Public& publicKey() const { return public_; }

    /// The Ed25519 signature of `message`, 64 bytes.
    [[nodiscard]] Bytes sign(ByteView message) const
        requires(Purpose::signs);

    /// X25519. Fails with `CryptoError` if the public key is unsafe.
    [[nodiscard]] Result<SecretKeyBytes> sharedSecret(const AgreementPublicKey& peer) const
        requires(!Purpose::signs);

    /// Only for the store of this device's keys.
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
