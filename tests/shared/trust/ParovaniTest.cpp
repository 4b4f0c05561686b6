#include "shared/trust/Parovani.h"

#include "shared/trust/CryptoError.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/wire/TalkSpanError.h"
#include "tests/support/TrustSupport.h"

#include <gtest/gtest.h>

namespace morvex {

namespace {

const PairID pairID{"PAIR-1"};

int verifications = 0;

bool countVerification(ByteView, ByteView, ByteView) {
    ++verifications;
    return true;
}

std::string number(std::array<std::uint8_t, 4> derived) {
    return Parovani::comparisonNumber(derived);
}

} // namespace

TEST(Parovani, AcceptsTheHelloOfAPhoneForItsOwnPairOnly) {
    auto hello = Parovani::makeHello(DeviceIdentity::generate(), pairID);
    EXPECT_TRUE(Parovani::checkHello(hello, pairID));
    EXPECT_FALSE(Parovani::checkHello(hello, PairID{"PAIR-2"}));
}

TEST(Parovani, RefusesAHelloWithAnyFieldChanged) {
    auto phone = DeviceIdentity::generate(), stranger = DeviceIdentity::generate();
    auto genuine = Parovani::makeHello(phone, pairID);

    struct {
        const char* what;
        void (*change)(PairingHello&, const DeviceIdentity&);
    } table[] = {
        {"device", [](auto& hello, auto& other) { hello.device = other.deviceID(); }},
        {"signing key", [](auto& hello, auto& other) { hello.signingKey = other.signingKey(); }},
        {"device and signing key",
         [](auto& hello, auto& other) {
             hello.device = other.deviceID();
             hello.signingKey = other.signingKey();
         }},
        {"agreement key", [](auto& hello, auto& other) { hello.agreementKey = other.agreementKey(); }},
        {"signature", [](auto& hello, auto&) { hello.signature[5] ^= 1; }},
        {"signature length", [](auto& hello, auto&) { hello.signature.pop_back(); }},
        {"no signature", [](auto& hello, auto&) { hello.signature.clear(); }},
    };

    for (auto& row : table) {
        auto hello = genuine;
        row.change(hello, stranger);
        EXPECT_FALSE(Parovani::checkHello(hello, pairID)) << row.what;
    }
}

TEST(Parovani, RefusesAHelloUnderAnotherNameBeforeAnySignatureWork) {
    auto hello = Parovani::makeHello(DeviceIdentity::generate(), pairID);
    verifications = 0;
    EXPECT_TRUE(Parovani::checkHello(hello, pairID, countVerification));
    EXPECT_EQ(verifications, 1);
    hello.device.rawValue[0] = hello.device.rawValue[0] == 'A' ? 'B' : 'A';
    EXPECT_FALSE(Parovani::checkHello(hello, pairID, countVerification));
    EXPECT_EQ(verifications, 1);
}

TEST(Parovani, BothSidesDeriveTheSamePairKeyWhicheverRunsTheDerivation) {
    auto one = DeviceIdentity::generate(), other = DeviceIdentity::generate();
    auto key = [](auto& own, auto& peer) {
        auto derived =
            Parovani::pairKey(own.dohodovy(), peer.agreementKey(), own.deviceID(), peer.deviceID());
        return test::hex(derived.value().view());
    };
    EXPECT_EQ(key(one, other), key(other, one));
    EXPECT_NE(key(one, other), key(one, one));
}

TEST(Parovani, ThePairKeyDependsOnBothIdentifiers) {
    auto one = DeviceIdentity::generate(), other = DeviceIdentity::generate();
    auto key = [&](const char* first, const char* second) {
        return test::hex(
            Parovani::pairKey(one.dohodovy(), other.agreementKey(), {first}, {second}).value().view());
    };
    EXPECT_EQ(key("A", "B"), key("B", "A"));
    EXPECT_NE(key("A", "B"), key("A", "C"));
}

TEST(Parovani, GivesNoPairKeyForAnUnsafeKeyOfThePhone) {
    auto key = Parovani::pairKey(AgreementPrivateKey::generate(), AgreementPublicKey{}, {"A"}, {"B"});
    auto* cause = test::causeOf<CryptoError>(key);
    ASSERT_TRUE(cause);
    EXPECT_EQ(cause->failure, CryptoFailure::refusedKey);
}

TEST(Parovani, PrintsTheComparisonNumberAsTwoGroupsOfThreeDigits) {
    EXPECT_EQ(number({0, 0, 0, 1}), "000 001");
    EXPECT_EQ(number({0, 0, 0, 0}), "000 000");
    EXPECT_EQ(number({0x00, 0x0f, 0x42, 0x3f}), "999 999");
    EXPECT_EQ(number({0x00, 0x0f, 0x42, 0x40}), "000 000");
    EXPECT_EQ(number({0xff, 0xff, 0xff, 0xff}), "967 295");
}

TEST(Parovani, QrTextHasItsKeysInSortedOrderAndNothingAround) {
    PairingBundle bundle{.v = ProtocolVersion::current,
                         .relayURL = "r",
                         .pairID = {"p"},
                         .pairingToken = "t",
                         .signingKey = {},
                         .agreementKey = {}};
    auto zeros = AgreementPublicKey{}.text();
    EXPECT_EQ(Parovani::qrText(bundle),
              R"({"agreementKey":")" + zeros +
                  R"(","pairID":"p","pairingToken":"t","relayURL":"r","signingKey":")" + zeros +
                  R"(","v":"1.4"})");
    EXPECT_EQ(Parovani::bundleOf(Parovani::qrText(bundle)).value(), bundle);
}

TEST(Parovani, AnythingUnreadableInTheQrTextFailsTheWhole) {
    auto zeros = AgreementPublicKey{}.text();
    auto text = [&](std::string key, std::string version) {
        return R"({"agreementKey":")" + key +
               R"(","pairID":"p","pairingToken":"t","relayURL":"r","signingKey":")" + zeros + R"(","v":")" +
               version + R"("})";
    };
    ASSERT_TRUE(Parovani::bundleOf(text(zeros, "1.4")));
    EXPECT_TRUE(test::causeOf<TalkSpanError>(Parovani::bundleOf(text(zeros, "one"))));
    EXPECT_TRUE(test::causeOf<KryptoChyba>(Parovani::bundleOf(text("AAAA", "1.4"))));
    EXPECT_TRUE(test::causeOf<KryptoChyba>(Parovani::bundleOf(text("no base64", "1.4"))));
    for (auto broken : {"", "{}", "https://example.com", "{\"v\":\"1.4\"}"})
        EXPECT_FALSE(Parovani::bundleOf(broken));
    EXPECT_FALSE(Parovani::bundleOf(text(zeros, "1.4") + "x"));
}

} // namespace morvex
