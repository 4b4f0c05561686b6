#include "shared/wire/RelayMessage.h"

#include "shared/wire/Json.h"
#include "shared/wire/TalkSpanError.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

const std::string zeroKey = std::string(43, 'A') + "=";

struct Frame {
    std::string json;
    RelayMessage message;
};

std::vector<Frame> frames() {
    Envelope envelope;
    envelope.v = {1, 4};
    envelope.counter = 7;
    return {
        {R"({"challenge":{"nonce":"AQI=","v":"1.4"}})", {RelayMessage::Challenge{{1, 2}, {1, 4}}}},
        {R"({"authenticate":{"pair":"P","device":"D","key":")" + zeroKey + R"(","signature":"/w=="}})",
         {RelayMessage::Authenticate{{"P"}, {"D"}, {}, {0xff}}}},
        {R"({"authenticated":{"peerOnline":true}})", {RelayMessage::Authenticated{true}}},
        {R"({"peerOnline":{"_0":true}})", {RelayMessage::PeerOnline{true}}},
        {R"({"peerOnline":{"_0":false}})", {RelayMessage::PeerOnline{false}}},
        {R"({"envelope":{"_0":)" + encode(envelope) + "}}", {RelayMessage::Forward{envelope}}},
        {R"({"failure":{"code":"tooLarge","detail":"1 MiB"}})",
         {RelayMessage::Failure{RelayFailure::tooLarge, "1 MiB"}}},
    };
}

TEST(RelayMessage, HasOneFormForEachCase) {
    for (const auto& [json, message] : frames()) {
        EXPECT_EQ(encode(message), json);
        EXPECT_EQ(decode<RelayMessage>(json).value(), message) << json;
    }
}

TEST(RelayMessage, NeedsExactlyOneKey) {
    for (const auto* json : {"{}", R"({"peerOnline":{"_0":true},"authenticated":{"peerOnline":true}})",
                             R"({"peerOnline":{"_0":true},"other":1})"}) {
        const auto read = decode<RelayMessage>(json);
        ASSERT_FALSE(read) << json;
        EXPECT_EQ(read.error().popis().czech(), "Invalid number of keys found, expected one.");
    }
}

TEST(RelayMessage, RefusesAFrameThatItCannotReadWhole) {
    const std::pair<const char*, const char*> cases[] = {
        {R"([])", "Zpráva má špatný typ (pole)."},
        {R"({"hello":{}})", "Zpráva má neznámý druh „hello“."},
        {R"({"peerOnline":true})", "Pole „peerOnline“ má špatný typ (pravdivostní hodnota)."},
        {R"({"peerOnline":null})", "Pole „peerOnline“ má špatný typ (null)."},
        {R"({"peerOnline":{"peerOnline":true}})", "Pole „peerOnline._0“ chybí."},
        {R"({"authenticated":{"_0":true}})", "Pole „authenticated.peerOnline“ chybí."},
        {R"({"failure":{"code":"full","detail":""}})", "Pole „failure.code“ má neznámou hodnotu „full“."},
        {R"({"challenge":{"nonce":"AQI","v":"1.4"}})", "Pole „challenge.nonce“ má nečitelnou hodnotu „AQI“."},
    };
    for (const auto& [json, expected] : cases) {
        const auto read = decode<RelayMessage>(json);
        ASSERT_FALSE(read) << json;
        EXPECT_EQ(read.error().popis().czech(), expected);
    }
}

TEST(RelayMessage, SaysThatAChallengeOfAnotherProtocolIsForeign) {
    const auto read = decode<RelayMessage>(R"({"challenge":{"nonce":"","v":"two"}})");
    ASSERT_FALSE(read);
    ASSERT_NE(read.error().as<TalkSpanError>(), nullptr);
    EXPECT_EQ(read.error().popis().czech(),
              "Telefon a Mac mluví jinou verzí protokolu (1.4 proti two). Aktualizuj tu "
              "starší aplikaci.");
}

TEST(RelayMessage, NamesEveryFailureByItsCase) {
    const char* words[] = {"protocolMismatch", "badSignature", "unknownPair", "revoked",
                           "notAuthenticated", "expired",      "tooLarge",    "rateLimited",
                           "peerOffline",      "malformed"};
    for (std::size_t index = 0; index < std::size(words); ++index)
        EXPECT_EQ(rawValue(static_cast<RelayFailure>(index)), words[index]);
    EXPECT_EQ(rawValue(RelayFailure::malformed), "malformed");
}

} // namespace
} // namespace morvex
