#include "relay/Login.h"

#include "tests/support/TestPair.h"

#include <gtest/gtest.h>

using namespace morvex;

namespace {

const Bytes nonce(32, 7);

struct LoginTest : testing::Test {
    PairStore store = PairStore::open(":memory:").value();
    TestPair pair;

    LoginTest() {
        const Member mac{pair.mac.deviceID(), pair.mac.signingKey(), DeviceRole::mac};
        EXPECT_TRUE(store.create(pair.id, mac, Digest{}, Date{}));
    }

    void join() {
        EXPECT_TRUE(
            store.join(pair.id, {pair.phone.deviceID(), pair.phone.signingKey(), DeviceRole::phone}).value());
    }

    LoginAnswer answer(const std::string& frame, std::string_view version = "1.4") {
        return Login{nonce, version}.answer(store, frame).value();
    }
};

} // namespace

TEST_F(LoginTest, ChallengesWithTheNonceAndTheVersionOfTheRelay) {
    const auto message = decode<RelayMessage>(Login{nonce, "1.4"}.challenge()).value();
    const auto* challenge = message.as<RelayMessage::Challenge>();
    ASSERT_TRUE(challenge);
    EXPECT_EQ(challenge->nonce, nonce);
    EXPECT_EQ(challenge->v, ProtocolVersion::current);
}

TEST_F(LoginTest, ChallengesEverySocketWithOtherRandomBytes) {
    EXPECT_NE(Login::start("1.4").challenge(), Login::start("1.4").challenge());
}

TEST_F(LoginTest, TheCreatorMayWaitForThePhone) {
    EXPECT_EQ(answer(pair.authenticate(pair.mac, nonce)),
              LoginAnswer(Seat{pair.id, pair.mac.deviceID(), std::nullopt}));
}

TEST_F(LoginTest, BothMembersGetTheirSeats) {
    join();
    EXPECT_EQ(answer(pair.authenticate(pair.mac, nonce)),
              LoginAnswer(Seat{pair.id, pair.mac.deviceID(), pair.phone.deviceID()}));
    EXPECT_EQ(answer(pair.authenticate(pair.phone, nonce)),
              LoginAnswer(Seat{pair.id, pair.phone.deviceID(), pair.mac.deviceID()}));
}

TEST_F(LoginTest, ASignatureOverAnythingButTheRawNonceIsBad) {
    EXPECT_EQ(answer(pair.authenticate(pair.mac, Bytes(32, 8))), LoginAnswer(RelayFailure::badSignature));
    EXPECT_EQ(answer(pair.authenticate(pair.mac, asBytes("BwcHBwcHBwcHBwcHBwcHBwcHBwcHBwcHBwcHBwcHBwc="))),
              LoginAnswer(RelayFailure::badSignature));
}

TEST_F(LoginTest, ADeviceThatIsNotTheFingerprintOfItsKeyIsRefused) {
    const RelayMessage::Authenticate borrowed{pair.id, pair.mac.deviceID(), pair.phone.signingKey(),
                                              pair.phone.sign(nonce)};
    EXPECT_EQ(answer(encode(RelayMessage{borrowed})), LoginAnswer(RelayFailure::badSignature));
}

TEST_F(LoginTest, StrangersAndUnknownPairsLookTheSame) {
    EXPECT_EQ(answer(pair.authenticate(DeviceIdentity::generate(), nonce)),
              LoginAnswer(RelayFailure::unknownPair));
    pair.id = PairID{"OTHER"};
    EXPECT_EQ(answer(pair.authenticate(pair.mac, nonce)), LoginAnswer(RelayFailure::unknownPair));
}

TEST_F(LoginTest, OnlyAMemberLearnsOfARevocation) {
    ASSERT_TRUE(store.revoke(pair.id, Date{}));
    EXPECT_EQ(answer(pair.authenticate(pair.mac, nonce)), LoginAnswer(RelayFailure::revoked));
    EXPECT_EQ(answer(pair.authenticate(DeviceIdentity::generate(), nonce)),
              LoginAnswer(RelayFailure::unknownPair));
}

TEST_F(LoginTest, AnEnvelopeBeforeTheLoginIsRefused) {
    EXPECT_EQ(answer(pair.fromMac()), LoginAnswer(RelayFailure::notAuthenticated));
}

TEST_F(LoginTest, OtherFramesAreMalformed) {
    for (const char* frame : {"", "{}", "null", R"({"authenticate":{}})", R"({"peerOnline":{"_0":true}})"})
        EXPECT_EQ(answer(frame), LoginAnswer(RelayFailure::malformed)) << frame;
}

TEST_F(LoginTest, AForeignOrMissingVersionThatStillLogsInIsAMismatch) {
    const auto frame = pair.authenticate(pair.mac, nonce);
    for (const char* version : {"", "2.0", "0.4", "1", "x"})
        EXPECT_EQ(answer(frame, version), LoginAnswer(RelayFailure::protocolMismatch)) << version;
    for (const char* version : {"1.0", "1.9"})
        EXPECT_TRUE(std::holds_alternative<Seat>(answer(frame, version))) << version;
}
