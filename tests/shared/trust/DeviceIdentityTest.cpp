#include "shared/trust/DeviceIdentity.h"

#include "shared/trust/Fingerprint.h"
#include "shared/trust/Parovani.h"
#include "tests/support/TrustSupport.h"

#include <gtest/gtest.h>

#include <memory>

namespace morvex {

static_assert(!std::is_copy_constructible_v<DeviceIdentity> && std::is_move_constructible_v<DeviceIdentity>);

TEST(DeviceIdentity, DrawsBothKeysAtRandom) {
    auto one = DeviceIdentity::generate(), other = DeviceIdentity::generate();
    EXPECT_NE(one.signingKey(), other.signingKey());
    EXPECT_NE(one.agreementKey(), other.agreementKey());
    EXPECT_NE(one.deviceID(), other.deviceID());
}

TEST(DeviceIdentity, IsNamedByItsSigningKeyAndSignsWithIt) {
    auto identity = std::make_shared<const DeviceIdentity>(DeviceIdentity::generate());
    EXPECT_EQ(identity->deviceID(), deviceID(identity->signingKey()));
    EXPECT_TRUE(ed25519Verify(identity->sign(asBytes("text")), asBytes("text"), identity->signingKey().raw));
}

TEST(DeviceIdentity, ComesBackFromItsStoredKeys) {
    auto identity = DeviceIdentity::generate();
    DeviceIdentity again(SigningPrivateKey::fromRaw(identity.podpisovy().exportRaw().view()).value(),
                         AgreementPrivateKey::fromRaw(identity.dohodovy().exportRaw().view()).value());
    EXPECT_EQ(again.deviceID(), identity.deviceID());
    EXPECT_EQ(again.agreementKey(), identity.agreementKey());
}

TEST(DeviceIdentity, DerivesThePairKeyFromTheStoredPeer) {
    auto mac = DeviceIdentity::generate(), phone = DeviceIdentity::generate();
    PairedPeer peer{.pairID = {"PAIR-1"},
                    .relayURL = "http://127.0.0.1:8787",
                    .deviceID = phone.deviceID(),
                    .podpisovyKlic = phone.signingKey(),
                    .dohodovyKlic = phone.agreementKey(),
                    .role = DeviceRole::phone,
                    .potvrzeno = {}};
    auto expected = Parovani::pairKey(phone.dohodovy(), mac.agreementKey(), phone.deviceID(), mac.deviceID());
    EXPECT_EQ(test::hex(mac.pairKey(peer).value().view()), test::hex(expected.value().view()));
    peer.dohodovyKlic = {};
    EXPECT_FALSE(mac.pairKey(peer));
}

} // namespace morvex
