#include "relay/PairCalls.h"

#include "tests/support/TestPair.h"

#include <gtest/gtest.h>

#include <set>

using namespace morvex;

namespace {

using std::chrono::microseconds;
using std::chrono::minutes;
using std::chrono::seconds;

constexpr Date now{seconds{1'800'000'000}};

struct PairCallsTest : testing::Test {
    PairStore store = PairStore::open(":memory:").value();
    PairCalls calls{store, [] { return FreshPair{PairID{"PAIR"}, "secret-token"}; }};
    TestPair pair;

    CallReply create(Date when = now) {
        return calls.answer("/v1/pair/create", TestPair::create(pair.mac), when);
    }

    CallReply join(Date when = now) {
        return calls.answer("/v1/pair/join", TestPair::join(pair.phone, "secret-token"), when);
    }

    CallReply joinWith(const std::string& body) { return calls.answer("/v1/pair/join", body, now); }

    CallReply revoke(const std::string& body, Date when = now) {
        return calls.answer("/v1/device/revoke", body, when);
    }

    bool isRevoked() { return store.find(pair.id).value()->isRevoked; }
};

void expectRefused(const CallReply& reply, CallRefusal cause) {
    EXPECT_EQ(reply.status, refusal(cause).status);
    EXPECT_EQ(reply.body, refusal(cause).body);
    EXPECT_FALSE(reply.revoked);
}

} // namespace

TEST_F(PairCallsTest, CreateAnswersWithThePairTheTokenAndTenMinutes) {
    const auto reply = create();
    EXPECT_EQ(reply.status, 200U);
    EXPECT_EQ(reply.body,
              R"({"pairID":"PAIR","pairingToken":"secret-token","expiresAt":"2027-01-15T08:10:00Z"})");
    EXPECT_EQ(store.find(pair.id).value()->member(pair.mac.deviceID())->role, DeviceRole::mac);
}

TEST_F(PairCallsTest, TheStoreKnowsOnlyTheHashOfTheToken) {
    create();
    EXPECT_TRUE(store.findByToken(sha256(asBytes("secret-token"))).value());
}

TEST_F(PairCallsTest, APhoneMayCreateAndAMacJoin) {
    EXPECT_EQ(calls.answer("/v1/pair/create", TestPair::create(pair.phone, DeviceRole::phone), now).status,
              200U);
    EXPECT_EQ(joinWith(TestPair::join(pair.mac, "secret-token", DeviceRole::mac)).status, 200U);
}

TEST_F(PairCallsTest, ADeviceIDThatIsNotTheFingerprintOfItsKeyIsRefused) {
    const ZalozitPozadavek created{pair.phone.deviceID(), pair.mac.signingKey(), DeviceRole::mac};
    expectRefused(calls.answer("/v1/pair/create", encode(created), now), CallRefusal::wrongFingerprint);
    create();
    const PripojitPozadavek joined{"secret-token", pair.mac.deviceID(), pair.phone.signingKey(),
                                   DeviceRole::phone};
    expectRefused(joinWith(encode(joined)), CallRefusal::wrongFingerprint);
}

TEST_F(PairCallsTest, JoinAnswersWithThePair) {
    create();
    const auto reply = join();
    EXPECT_EQ(reply.status, 200U);
    EXPECT_EQ(reply.body, R"({"pairID":"PAIR"})");
    EXPECT_EQ(store.find(pair.id).value()->peerOf(pair.mac.deviceID())->device, pair.phone.deviceID());
}

TEST_F(PairCallsTest, ATokenServesOnce) {
    create();
    join();
    expectRefused(join(), CallRefusal::usedToken);
    expectRefused(joinWith(TestPair::join(DeviceIdentity::generate(), "secret-token")),
                  CallRefusal::usedToken);
}

TEST_F(PairCallsTest, ATokenServesToTheLastMomentOfItsTenMinutes) {
    create();
    expectRefused(join(now + minutes{10} + microseconds{1}), CallRefusal::expiredToken);
    EXPECT_EQ(join(now + minutes{10}).status, 200U);
}

TEST_F(PairCallsTest, AnUnknownTokenIsRefused) {
    expectRefused(join(), CallRefusal::unknownToken);
    create();
    expectRefused(joinWith(TestPair::join(pair.phone, "")), CallRefusal::unknownToken);
}

TEST_F(PairCallsTest, ARefusedJoinLeavesTheTokenUsable) {
    create();
    expectRefused(joinWith(TestPair::join(pair.phone, "secret-token", DeviceRole::mac)),
                  CallRefusal::sameRole);
    expectRefused(joinWith(TestPair::join(pair.mac, "secret-token")), CallRefusal::sameDevice);
    EXPECT_EQ(join().status, 200U);
}

TEST_F(PairCallsTest, ARevokedPairCannotBeJoined) {
    create();
    EXPECT_EQ(revoke(pair.revoke(pair.mac, pair.mac.deviceID(), now)).status, 204U);
    expectRefused(join(), CallRefusal::usedToken);
}

TEST_F(PairCallsTest, EitherMemberMayRevokeThePair) {
    for (const auto* by : {&pair.mac, &pair.phone}) {
        store = PairStore::open(":memory:").value();
        create();
        join();
        const auto reply = revoke(pair.revoke(*by, pair.phone.deviceID(), now));
        EXPECT_EQ(reply.status, 204U);
        EXPECT_EQ(reply.body, "");
        EXPECT_EQ(reply.revoked, pair.id);
        EXPECT_TRUE(isRevoked());
    }
}

TEST_F(PairCallsTest, RevokingTwiceIsNoFailure) {
    create();
    revoke(pair.revoke(pair.mac, pair.mac.deviceID(), now));
    EXPECT_EQ(revoke(pair.revoke(pair.mac, pair.mac.deviceID(), now)).status, 204U);
}

TEST_F(PairCallsTest, ARevocationIsTimelyForFiveMinutesBothWays) {
    const auto body = [&](Date signedAt) { return pair.revoke(pair.mac, pair.mac.deviceID(), signedAt); };
    create();
    expectRefused(revoke(body(now - minutes{5} - seconds{1})), CallRefusal::untimely);
    expectRefused(revoke(body(now + minutes{5} + seconds{1})), CallRefusal::untimely);
    EXPECT_FALSE(isRevoked());
    EXPECT_EQ(revoke(body(now + minutes{5})).status, 204U);
    EXPECT_EQ(revoke(body(now - minutes{5})).status, 204U);
}

TEST_F(PairCallsTest, OnlyMembersRevokeAndAreRevoked) {
    const auto stranger = DeviceIdentity::generate();
    expectRefused(revoke(pair.revoke(pair.mac, pair.phone.deviceID(), now)), CallRefusal::unknownPair);
    create();
    join();
    expectRefused(revoke(pair.revoke(stranger, pair.phone.deviceID(), now)), CallRefusal::notMember);
    expectRefused(revoke(pair.revoke(pair.mac, stranger.deviceID(), now)), CallRefusal::unknownTarget);
    EXPECT_FALSE(isRevoked());
}

TEST_F(PairCallsTest, ASignatureCoversEveryFieldOfARevocation) {
    create();
    join();
    const auto genuine = decode<OdvolatPozadavek>(pair.revoke(pair.mac, pair.phone.deviceID(), now)).value();
    auto otherTarget = genuine;
    otherTarget.target = pair.mac.deviceID();
    auto otherSigner = genuine;
    otherSigner.by = pair.phone.deviceID();
    auto otherTime = genuine;
    otherTime.signedAt += seconds{1};
    auto noSignature = genuine;
    noSignature.signature.clear();
    for (const auto& forged : {otherTarget, otherSigner, otherTime, noSignature})
        expectRefused(revoke(encode(forged)), CallRefusal::badSignature);
    EXPECT_FALSE(isRevoked());
}

TEST_F(PairCallsTest, WhatIsNoRequestIsRefused) {
    for (const char* path : {"/v1/pair/create", "/v1/pair/join", "/v1/device/revoke"})
        for (const char* body : {"", "{}", "[]", "null", "{", R"({"deviceID":1})", "\xff"})
            expectRefused(calls.answer(path, body, now), CallRefusal::unreadable);
    expectRefused(calls.answer("/v1/pair", "{}", now), CallRefusal::unknownCall);
}

TEST_F(PairCallsTest, AKeyOfAnotherLengthIsRefused) {
    const auto body = R"({"deviceID":")" + pair.mac.deviceID().rawValue + R"(","key":"AAAA","role":"mac"})";
    expectRefused(calls.answer("/v1/pair/create", body, now), CallRefusal::unreadable);
}

TEST(CallRefusal, IsAStatusAndAReason) {
    EXPECT_EQ(refusal(CallRefusal::unknownToken).status, 404U);
    EXPECT_EQ(refusal(CallRefusal::unknownToken).body, R"({"reason":"Tenhle párovací kód neznám."})");
    EXPECT_EQ(refusal(CallRefusal::tooMany).status, 429U);
}

TEST(FreshPair, HasRandomTextsThatNeedNoEscaping) {
    std::set<std::string> seen;
    for (int count = 0; count < 100; ++count) {
        const auto fresh = FreshPair::make();
        EXPECT_THAT(fresh.id.rawValue, testing::MatchesRegex("[A-Z2-7]{26}"));
        EXPECT_THAT(fresh.token, testing::MatchesRegex("[A-Za-z0-9_-]{43}"));
        seen.insert(fresh.id.rawValue);
        seen.insert(fresh.token);
    }
    EXPECT_EQ(seen.size(), 200U);
}
