#include "shared/wire/Envelope.h"

#include "shared/wire/Json.h"
#include "shared/wire/TalkSpanError.h"

#include <gtest/gtest.h>

#include <limits>

namespace morvex {
namespace {

using namespace std::chrono_literals;

constexpr auto msgID = "A3F45126-91AE-49CF-A231-8EA42E787339";
constexpr auto keyExchangeJSON =
    R"({"v":"1.4","pair":"PAIR","from":"PHONE","to":"MAC","msgID":"A3F45126-91AE-49CF-A231-8EA42E787339",)"
    R"("requestID":"session","kind":"kex","createdAt":"2026-11-18T11:06:41Z",)"
    R"("expiresAt":"2026-11-18T11:07:41Z","counter":0,"nonce":"","ciphertext":"aGk=","tag":""})";

Envelope hello(Date now = dateFromSeconds(1795000001)) {
    return keyExchange({"PAIR"}, {"PHONE"}, {"MAC"}, "session", toBytes("hi"), now, *Uuid::parse(msgID));
}

std::string replaced(std::string text, std::string_view what, std::string_view with) {
    return text.replace(text.find(what), what.size(), with);
}

TEST(Envelope, CarriesAHelloInTheClearForSixtySeconds) {
    EXPECT_EQ(encode(hello()), keyExchangeJSON);
    EXPECT_EQ(decode<Envelope>(keyExchangeJSON).value(), hello());
}

TEST(Envelope, ReadsEmptyNonceAndTagAsEmptyData) {
    const auto read = decode<Envelope>(keyExchangeJSON).value();
    EXPECT_TRUE(read.nonce.empty());
    EXPECT_TRUE(read.tag.empty());
    EXPECT_EQ(asText(read.ciphertext), "hi");
}

TEST(Envelope, AuthenticatesTenFieldsWithTheWireWordOfTheKind) {
    EXPECT_EQ(associatedData(hello()),
              "1.4|PAIR|PHONE|MAC|A3F45126-91AE-49CF-A231-8EA42E787339|session|kex|1795000001|1795000061|0");
    auto sealed = hello();
    sealed.v = {2, 10};
    sealed.requestID = "";
    sealed.kind = EnvelopeKind::data;
    sealed.counter = std::numeric_limits<std::uint64_t>::max();
    EXPECT_EQ(associatedData(sealed),
              "2.10|PAIR|PHONE|MAC|A3F45126-91AE-49CF-A231-8EA42E787339||data|1795000001|"
              "1795000061|18446744073709551615");
}

TEST(Envelope, HasTheSameAssociatedDataOnBothSidesOfTheWire) {
    const auto sent = hello(dateFromSeconds(1795000001) + 999999us);
    const auto received = decode<Envelope>(encode(sent)).value();
    EXPECT_EQ(associatedData(received), associatedData(sent));
    EXPECT_NE(received, sent);
}

TEST(Envelope, KnowsFourKinds) {
    for (const auto& [kind, word] : {std::pair{EnvelopeKind::data, "data"},
                                     {EnvelopeKind::keyExchange, "kex"},
                                     {EnvelopeKind::ping, "ping"},
                                     {EnvelopeKind::pong, "pong"}}) {
        const auto text = replaced(keyExchangeJSON, "kex", word);
        EXPECT_EQ(decode<Envelope>(text).value().kind, kind);
        EXPECT_EQ(encode(decode<Envelope>(text).value()), text);
    }
    EXPECT_FALSE(decode<Envelope>(replaced(keyExchangeJSON, "kex", "keyExchange")));
}

TEST(Envelope, KeepsACounterOverTheWholeRange) {
    const auto text = replaced(keyExchangeJSON, "\"counter\":0", "\"counter\":18446744073709551615");
    EXPECT_EQ(decode<Envelope>(text).value().counter, std::numeric_limits<std::uint64_t>::max());
    EXPECT_EQ(encode(decode<Envelope>(text).value()), text);
}

TEST(Envelope, FailsAsAForeignVersionWhenTheVersionCannotBeRead) {
    for (const auto* version : {"x", "1", "1.4.0", ""}) {
        const auto read = decode<Envelope>(replaced(keyExchangeJSON, "1.4", version));
        ASSERT_FALSE(read);
        const auto* error = read.error().as<TalkSpanError>();
        ASSERT_NE(error, nullptr) << version;
        EXPECT_EQ(*error, (TalkSpanError{TalkSpanError::ProtocolMismatch{"1.4", version}}));
    }
}

TEST(Envelope, FailsPlainlyWhenTheVersionIsNoText) {
    const auto read = decode<Envelope>(replaced(keyExchangeJSON, "\"1.4\"", "1.4"));
    ASSERT_FALSE(read);
    EXPECT_EQ(read.error().popis().czech(), "Pole „v“ má špatný typ (číslo).");
}

TEST(Envelope, NeedsEveryField) {
    const auto whole = parseJson(keyExchangeJSON).value().as_object();
    ASSERT_EQ(whole.size(), 13u);
    for (const auto& field : whole) {
        auto part = whole;
        part.erase(field.key());
        const auto read = decode<Envelope>(encode(part));
        ASSERT_FALSE(read) << field.key();
        EXPECT_EQ(read.error().popis().czech(), "Pole „" + std::string{field.key()} + "“ chybí.");
    }
}

TEST(Envelope, RefusesDatesWithFractions) {
    EXPECT_FALSE(decode<Envelope>(replaced(keyExchangeJSON, "41Z", "41.5Z")));
}

} // namespace
} // namespace morvex
