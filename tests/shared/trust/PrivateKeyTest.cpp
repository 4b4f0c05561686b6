#include "shared/trust/PrivateKey.h"

#include "shared/trust/CryptoError.h"
#include "shared/trust/SymmetricKey.h"
#include "tests/support/TrustSupport.h"

#include <gtest/gtest.h>

#include <concepts>
#include <ostream>

namespace morvex {

namespace {

template <class T>
concept Printable = requires(std::ostream& stream, const T& value) { stream << value; };
template <class T>
concept Secretive =
    std::movable<T> && !std::is_copy_constructible_v<T> && !std::equality_comparable<T> && !Printable<T>;

static_assert(Secretive<SigningPrivateKey> && Secretive<AgreementPrivateKey> &&
              Secretive<EphemeralPrivateKey>);
static_assert(Secretive<PairKey> && Secretive<ChannelKey>);

// Keys of different roles do not stand in for each other.
static_assert(!std::convertible_to<AgreementPrivateKey, EphemeralPrivateKey>);
static_assert(!std::convertible_to<PairKey, ChannelKey>);

template <class T>
concept Exportable = requires(const T& key) { key.exportRaw(); };
static_assert(Exportable<SigningPrivateKey> && Exportable<AgreementPrivateKey>);
static_assert(!Exportable<EphemeralPrivateKey>);

template <class Key> class PrivateKeys : public testing::Test {};

using AllPrivateKeys = testing::Types<SigningPrivateKey, AgreementPrivateKey, EphemeralPrivateKey>;

} // namespace

TYPED_TEST_SUITE(PrivateKeys, AllPrivateKeys);

TYPED_TEST(PrivateKeys, RefuseRawBytesOfAnotherLength) {
    for (std::size_t size : {0u, 31u, 33u, 64u}) {
        auto key = TypeParam::fromRaw(Bytes(size));
        auto* cause = test::causeOf<KryptoChyba>(key);
        ASSERT_TRUE(cause);
        auto* length = cause->template as<KryptoChyba::SpatnaDelkaKlice>();
        ASSERT_TRUE(length);
        EXPECT_EQ(length->ocekavano, 32u);
        EXPECT_EQ(length->dostal, size);
    }
}

TYPED_TEST(PrivateKeys, AreDrawnAtRandom) {
    EXPECT_NE(TypeParam::generate().publicKey(), TypeParam::generate().publicKey());
}

TYPED_TEST(PrivateKeys, MadeOfTheSameBytesHaveTheSamePublicHalf) {
    Bytes raw(32, 9);
    EXPECT_EQ(TypeParam::fromRaw(raw).value().publicKey(), TypeParam::fromRaw(raw).value().publicKey());
}

TEST(SigningPrivateKey, SurvivesExportAndMakesTheSameSignature) {
    auto key = SigningPrivateKey::generate();
    auto again = SigningPrivateKey::fromRaw(key.exportRaw().view()).value();
    EXPECT_EQ(again.publicKey(), key.publicKey());
    EXPECT_EQ(again.sign(asBytes("text")), key.sign(asBytes("text")));
    EXPECT_TRUE(ed25519Verify(key.sign(asBytes("text")), asBytes("text"), key.publicKey().raw));
}

TEST(AgreementPrivateKey, SurvivesExport) {
    auto key = AgreementPrivateKey::generate();
    EXPECT_EQ(AgreementPrivateKey::fromRaw(key.exportRaw().view()).value().publicKey(), key.publicKey());
}

TEST(SigningPrivateKey, LosesItsSecretWhenItIsMovedFrom) {
    auto key = SigningPrivateKey::generate();
    auto moved = std::move(key);
    EXPECT_EQ(test::hex(key.exportRaw().view()), std::string(64, '0'));
    EXPECT_NE(test::hex(moved.exportRaw().view()), std::string(64, '0'));
}

TEST(AgreementPrivateKey, RefusesAPeerKeyThatGivesASecretOfZeros) {
    auto secret = AgreementPrivateKey::generate().sharedSecret(AgreementPublicKey{});
    auto* cause = test::causeOf<CryptoError>(secret);
    ASSERT_TRUE(cause);
    EXPECT_EQ(cause->failure, CryptoFailure::refusedKey);
}

} // namespace morvex
