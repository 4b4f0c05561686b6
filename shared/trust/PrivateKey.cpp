#include "shared/trust/PrivateKey.h"

#include <algorithm>

namespace morvex {

namespace {

SecretKeyBytes secretOf(KeyView bytes) {
    SecretKeyBytes secret;
    std::ranges::copy(bytes, secret.writable().begin());
    return secret;
}

} // namespace

template <class Purpose>
PrivateKey<Purpose>::PrivateKey(SecretKeyBytes secret)
    : secret_(std::move(secret)), public_{Purpose::publicKeyOf(secret_.view())} {}

template <class Purpose> PrivateKey<Purpose> PrivateKey<Purpose>::generate() {
    SecretKeyBytes secret;
    fillRandom(secret.writable());
    return PrivateKey(std::move(secret));
}

template <class Purpose> Result<PrivateKey<Purpose>> PrivateKey<Purpose>::fromRaw(ByteView raw) {
    if (raw.size() != keySize) return fail(KryptoChyba{KryptoChyba::SpatnaDelkaKlice{keySize, raw.size()}});
    return PrivateKey(secretOf(raw.first<keySize>()));
}

template <class Purpose>
Bytes PrivateKey<Purpose>::sign(ByteView message) const
    requires(Purpose::signs)
{
    return ed25519Sign(message, secret_.view());
}

template <class Purpose>
Result<SecretKeyBytes> PrivateKey<Purpose>::sharedSecret(const AgreementPublicKey& peer) const
    requires(!Purpose::signs)
{
    return x25519(secret_.view(), peer.raw);
}

template <class Purpose>
SecretKeyBytes PrivateKey<Purpose>::exportRaw() const
    requires(Purpose::stored)
{
    return secretOf(secret_.view());
}

template class PrivateKey<SigningPurpose>;
template class PrivateKey<StaticAgreementPurpose>;
template class PrivateKey<EphemeralAgreementPurpose>;

} // namespace morvex
