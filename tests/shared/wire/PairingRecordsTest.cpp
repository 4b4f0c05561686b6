#include "shared/wire/Json.h"
#include "shared/wire/PairedPeer.h"
#include "shared/wire/PairingBundle.h"
#include "shared/wire/PairingHello.h"
#include "shared/wire/SessionHello.h"
#include "shared/wire/TalkSpanError.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

constexpr auto bundle =
    R"({"agreementKey":"/3nqd8Iv0dzBFfimuQzhQhC5VLBm7Ib9GDxBVpesEmE=","pairID":"PAIR-51308d3b974e",)"
    R"("pairingToken":"token-open-1","relayURL":"http://127.0.0.1:8787",)"
    R"("signingKey":"cmwqM3xGMJVSKt1eEBVQwtisuyhvw8BkzWmUXnrpXro=","v":"1.4"})";

std::string replaced(std::string text, std::string_view what, std::string_view with) {
    return text.replace(text.find(what), what.size(), with);
}

TEST(PairingBundle, WritesItsKeysInSortedOrder) {
    EXPECT_EQ(encode(decode<PairingBundle>(bundle).value()), bundle);
}

TEST(PairingBundle, FailsByTheCauseOfItsWorstField) {
    const auto version = decode<PairingBundle>(replaced(bundle, "1.4", "one"));
    EXPECT_NE(version.error().as<TalkSpanError>(), nullptr);
    const auto base64 = decode<PairingBundle>(replaced(bundle, "=\"", "\""));
    EXPECT_NE(base64.error().as<KryptoChyba>(), nullptr);
    const auto length = decode<PairingBundle>(replaced(bundle, "/3nqd8Iv", ""));
    EXPECT_EQ(*length.error().as<KryptoChyba>(), (KryptoChyba{KryptoChyba::SpatnaDelkaKlice{32, 26}}));
    const auto number = decode<PairingBundle>(replaced(bundle, "\"PAIR-51308d3b974e\"", "1"));
    EXPECT_NE(number.error().as<DecodeError>(), nullptr);
}

TEST(PairingHello, HasOneForm) {
    constexpr auto text =
        R"({"device":"D","signingKey":"cmwqM3xGMJVSKt1eEBVQwtisuyhvw8BkzWmUXnrpXro=",)"
        R"("agreementKey":"/3nqd8Iv0dzBFfimuQzhQhC5VLBm7Ib9GDxBVpesEmE=","signature":"AQI="})";
    EXPECT_EQ(encode(decode<PairingHello>(text).value()), text);
}

TEST(SessionHello, HasOneForm) {
    constexpr auto text =
        R"({"device":"D","ephemeral":"/3nqd8Iv0dzBFfimuQzhQhC5VLBm7Ib9GDxBVpesEmE=","signature":""})";
    EXPECT_EQ(encode(decode<SessionHello>(text).value()), text);
}

TEST(SessionHello, NeedsEveryField) {
    const std::string text =
        R"({"device":"D","ephemeral":"/3nqd8Iv0dzBFfimuQzhQhC5VLBm7Ib9GDxBVpesEmE=","signature":"AQI="})";
    ASSERT_TRUE(decode<SessionHello>(text));
    for (const auto* key : {"\"device\"", "\"ephemeral\"", "\"signature\""})
        EXPECT_FALSE(decode<SessionHello>(replaced(text, key, "\"other\""))) << key;
}

TEST(PairedPeer, KeepsTheConfirmationAtWholeSeconds) {
    constexpr auto text =
        R"({"pairID":"P","relayURL":"http://127.0.0.1:8787","deviceID":"D",)"
        R"("podpisovyKlic":"cmwqM3xGMJVSKt1eEBVQwtisuyhvw8BkzWmUXnrpXro=",)"
        R"("dohodovyKlic":"/3nqd8Iv0dzBFfimuQzhQhC5VLBm7Ib9GDxBVpesEmE=","role":"phone","potvrzeno":"2026-11-16T00:45:56Z"})";
    auto peer = decode<PairedPeer>(text).value();
    EXPECT_EQ(peer.role, DeviceRole::phone);
    peer.potvrzeno += std::chrono::milliseconds{700};
    EXPECT_EQ(encode(peer), text);
    EXPECT_FALSE(decode<PairedPeer>(replaced(text, "phone", "tablet")));
}

} // namespace
} // namespace morvex
