#include "shared/trust/SessionHandshake.h"

#include "shared/trust/DeviceIdentity.h"

#include <gtest/gtest.h>

namespace morvex {

namespace {

const PairID pairID{"PAIR-1"};

int verifications = 0;

bool countVerification(ByteView, ByteView, ByteView) {
    ++verifications;
    return true;
}

SessionHello helloOf(const DeviceIdentity& identity) {
    return makeSessionHello(identity, EphemeralPrivateKey::generate().publicKey(), pairID);
}

} // namespace

TEST(SessionHandshake, AcceptsTheHelloOfTheStoredPeerForItsPair) {
    auto peer = DeviceIdentity::generate();
    auto hello = helloOf(peer);
    EXPECT_TRUE(checkSessionHello(hello, pairID, peer.signingKey()));
    EXPECT_FALSE(checkSessionHello(hello, PairID{"PAIR-2"}, peer.signingKey()));
}

TEST(SessionHandshake, RefusesAnotherDeviceUnderEitherName) {
    auto peer = DeviceIdentity::generate(), stranger = DeviceIdentity::generate();
    auto hello = helloOf(stranger);
    EXPECT_FALSE(checkSessionHello(hello, pairID, peer.signingKey()));
    hello.device = peer.deviceID();
    EXPECT_FALSE(checkSessionHello(hello, pairID, peer.signingKey()));
}

TEST(SessionHandshake, RefusesAChangedKeyAndAChangedSignature) {
    auto peer = DeviceIdentity::generate();
    auto changedKey = helloOf(peer), changedSignature = changedKey;
    changedKey.ephemeral.raw[0] ^= 1;
    changedSignature.signature[63] ^= 1;
    EXPECT_FALSE(checkSessionHello(changedKey, pairID, peer.signingKey()));
    EXPECT_FALSE(checkSessionHello(changedSignature, pairID, peer.signingKey()));
}

TEST(SessionHandshake, ChecksTheNameBeforeAnySignatureWork) {
    auto peer = DeviceIdentity::generate();
    auto hello = helloOf(peer);
    verifications = 0;
    EXPECT_TRUE(checkSessionHello(hello, pairID, peer.signingKey(), countVerification));
    EXPECT_EQ(verifications, 1);
    hello.device = {"ELSE"};
    EXPECT_FALSE(checkSessionHello(hello, pairID, peer.signingKey(), countVerification));
    EXPECT_EQ(verifications, 1);
}

} // namespace morvex
