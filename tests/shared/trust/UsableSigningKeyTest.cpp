#include "shared/trust/UsableSigningKey.h"

#include "shared/trust/Crypto.h"
#include "tests/support/TrustSupport.h"
#include "tests/support/UnownedSigningKeys.h"

#include <gtest/gtest.h>

namespace morvex {

using test::hex;
using test::unhex;

TEST(UsableSigningKey, RefusesWhatNobodyCanOwn) {
    for (const auto& key : test::unownedSigningKeys()) EXPECT_FALSE(isUsableSigningKey(key)) << hex(key);
}

TEST(UsableSigningKey, RefusesOtherLengths) {
    const auto key = unhex("d75a980182b10ab7d54bfed3c964073a0ee172f3daa62325af021a68f707511a");
    EXPECT_TRUE(isUsableSigningKey(key));
    EXPECT_FALSE(isUsableSigningKey(ByteView(key).first(31)));
    EXPECT_FALSE(isUsableSigningKey({}));
    auto longer = key;
    longer.push_back(0);
    EXPECT_FALSE(isUsableSigningKey(longer));
}

TEST(UsableSigningKey, AcceptsTheNeighboursOfTheRefused) {
    for (const char* key : {
             "0200000000000000000000000000000000000000000000000000000000000000", // 2
             "ebffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff7f", // p - 2
             "ebffffffffffffffffffffffffffffffffffffffffffffffffffffffffffffff",
             "27e8958fc2b227b045c3f489f2ef98f0d5dfac05d3c63339b13802886d53fc05",
             "26e8958fc2b227b045c3f489f2ef98f0d5dfac05d3c63339b13802886d53fc06",
         })
        EXPECT_TRUE(isUsableSigningKey(unhex(key))) << key;
}

TEST(UsableSigningKey, AcceptsEveryFreshKey) {
    for (int round = 0; round < 200; ++round) {
        RawKey privateKey;
        fillRandom(privateKey);
        EXPECT_TRUE(isUsableSigningKey(ed25519PublicKey(privateKey)));
    }
}

// An honest key with the point of order 2 added: (x, y) + (0, -1) = (-x, -y).
TEST(UsableSigningKey, AcceptsAMixedKeyUnderWhichNoSignatureIsFree) {
    const auto mixed = unhex("16a567fe7d4ef5482ab4012c369bf8c5f11e8d0c2559dcda50fde59708f8aee5");
    EXPECT_TRUE(isUsableSigningKey(mixed));
    for (std::uint8_t message = 0; message < 64; ++message)
        for (const auto& signature : test::keylessSignatures())
            EXPECT_FALSE(ed25519Verify(signature, {&message, 1}, mixed));
}

} // namespace morvex
