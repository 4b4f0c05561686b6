#include "shared/wire/PublicKeys.h"

#include "shared/base/Base64.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

constexpr auto text = "cmwqM3xGMJVSKt1eEBVQwtisuyhvw8BkzWmUXnrpXro=";

template <class Key> class PublicKeys : public testing::Test {};

using BothKeys = testing::Types<SigningPublicKey, AgreementPublicKey>;
TYPED_TEST_SUITE(PublicKeys, BothKeys);

TYPED_TEST(PublicKeys, ReadBackFromTheirText) {
    const auto key = TypeParam::parse(text).value();
    EXPECT_EQ(key.text(), text);
    EXPECT_EQ(TypeParam::fromRaw(key.raw).value(), key);
}

TYPED_TEST(PublicKeys, HaveThirtyTwoBytes) {
    for (const std::size_t size : {0u, 31u, 33u, 64u}) {
        const KryptoChyba expected{KryptoChyba::SpatnaDelkaKlice{32, size}};
        EXPECT_EQ(*TypeParam::fromRaw(Bytes(size)).error().template as<KryptoChyba>(), expected);
        EXPECT_EQ(*TypeParam::parse(base64Encode(Bytes(size))).error().template as<KryptoChyba>(), expected);
    }
}

TYPED_TEST(PublicKeys, OfAnotherLengthAreToldWithBothLengths) {
    EXPECT_EQ(TypeParam::fromRaw(Bytes(31)).error().popis().czech(), "Klíč má mít 32 bajtů, má jich 31.");
}

TYPED_TEST(PublicKeys, AreBase64) {
    for (const auto* bad : {"cmwqM3xG MJVS", "x", "????"}) {
        const auto key = TypeParam::parse(bad);
        ASSERT_FALSE(key);
        EXPECT_EQ(*key.error().template as<KryptoChyba>(),
                  (KryptoChyba{KryptoChyba::NeplatnyKlic{Sentence("Nejde to přečíst jako base64.")}}));
        EXPECT_EQ(key.error().popis().czech(), "Nejde to přečíst jako base64.");
    }
}

} // namespace
} // namespace morvex
