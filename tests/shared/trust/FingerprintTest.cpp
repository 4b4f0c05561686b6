#include "shared/trust/Fingerprint.h"

#include "shared/trust/PrivateKey.h"

#include <gtest/gtest.h>

namespace morvex {

TEST(Fingerprint, IsTwentySixCharactersThatFollowFromTheKey) {
    auto key = SigningPrivateKey::generate().publicKey();
    EXPECT_EQ(deviceID(key).rawValue.size(), 26u);
    EXPECT_EQ(deviceID(key), deviceID(key));
    auto changed = key;
    changed.raw[31] ^= 1;
    EXPECT_NE(deviceID(changed), deviceID(key));
}

} // namespace morvex
