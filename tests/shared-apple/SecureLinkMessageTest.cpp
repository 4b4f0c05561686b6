#include "platform/ports/NetworkError.h"
#include "shared/wire/Json.h"
#include "shared/wire/TalkSpanError.h"
#include "tests/support/SecureLinkFixture.h"

#include <functional>
#include <string>
#include <utility>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;

const std::string tooEarly = "Zpráva dorazila dřív, než bylo spojení zabezpečené. Zopakuj to.";

/// What the link does with messages in both directions.
class SecureLinkMessageTest : public test::SecureLinkFixture {};

TEST_F(SecureLinkMessageTest, AMessageArrivesWithTheIdentityOfItsRequest) {
    secure();
    const MacPayload call{MacPayload::ToolCall{"soubory_najdi", R"({"dotaz":"smlouva"})"}};
    relay(phone.seal(call, "R-42"));
    EXPECT_EQ(takeEvents(), (Udalosti{zprava(call, "R-42")}));
}

TEST_F(SecureLinkMessageTest, AMessageBeforeTheSessionIsToldAndHarmsNothing) {
    logIn();
    auto hello = phone.newHello();
    phone.meet(*identita, sentHellos().back());
    auto early = phone.seal(note("early"));
    takeEvents();
    relay(early);
    EXPECT_EQ(takeEvents(), (Udalosti{chyba(tooEarly)}));
    relay(hello);
    EXPECT_EQ(takeEvents(), (Udalosti{pripraveny, pripraveno}));
    relay(early);
    EXPECT_EQ(takeEvents(), (Udalosti{zprava(note("early"))}));
}

TEST_F(SecureLinkMessageTest, AMessageOfALostConnectionsSessionIsTooEarlyOnTheNextOne) {
    secure();
    const auto late = phone.seal(note("of the old session"));
    socket->breakWith("síť spadla");
    executor.runUntilIdle();
    reconnect(1s);
    relay(RelayMessage::Authenticated{true});
    takeEvents();
    relay(late);
    EXPECT_EQ(takeEvents(), (Udalosti{chyba(tooEarly)}));
}

TEST_F(SecureLinkMessageTest, AMessageDeliveredTwiceIsToldOnceAndTheRepeatInSilence) {
    secure();
    auto first = phone.seal(note("first"));
    auto second = phone.seal(note("second"));
    for (int i = 0; i < 3; ++i) relay(second);
    relay(first);
    EXPECT_EQ(takeEvents(), (Udalosti{zprava(note("second"))}));
    EXPECT_TRUE(isSecured());
}

TEST_F(SecureLinkMessageTest, TheKindsPingAndPongAreTreatedAsData) {
    for (auto kind : {EnvelopeKind::ping, EnvelopeKind::pong}) {
        Envelope unsealed;
        unsealed.kind = kind;
        logIn();
        takeEvents();
        relay(unsealed);
        EXPECT_EQ(takeEvents(), (Udalosti{chyba(tooEarly)}));
        exchangeHellos();
        takeEvents();
        relay(phone.sealText(encode(note("content")), kind));
        EXPECT_EQ(takeEvents(), (Udalosti{zprava(note("content"))}));
        executor.run(link->zastavit());
    }
}

TEST_F(SecureLinkMessageTest, AnEnvelopeThatDoesNotOpenIsToldAndTheSessionStays) {
    struct Row {
        std::string words;
        std::function<void(Envelope&)> change;
    };

    const std::string changed = "Zpráva není zašifrovaná pro tohle spojení, nebo ji někdo změnil.";
    const std::vector<Row> rows{
        {"Obálka patří jinému páru.", [](Envelope& envelope) { envelope.pair = {"ANOTHER"}; }},
        {"Obálka je od jiného zařízení.", [](Envelope& envelope) { envelope.from = {"ANOTHER"}; }},
        {"Obálka není pro mě.", [](Envelope& envelope) { envelope.to = {"ANOTHER"}; }},
        {changed, [](Envelope& envelope) { envelope.requestID = "R-2"; }},
        {changed, [](Envelope& envelope) { envelope.kind = EnvelopeKind::ping; }},
        {changed, [](Envelope& envelope) { envelope.msgID += "0"; }},
        {changed, [](Envelope& envelope) { ++envelope.counter; }},
        {changed, [](Envelope& envelope) { envelope.expiresAt += 1s; }},
        {changed, [](Envelope& envelope) { envelope.ciphertext.front() ^= 1; }},
        {changed, [](Envelope& envelope) { envelope.tag.back() ^= 1; }},
        {changed, [](Envelope& envelope) { envelope.nonce.clear(); }},
        {"Ověřovací značka zprávy má špatnou délku.", [](Envelope& envelope) { envelope.tag.pop_back(); }},
        {"Zpráva dorazila mimo dobu své platnosti. Zkontroluj hodiny na obou zařízeních.",
         [](Envelope& envelope) { envelope.expiresAt -= 91s; }},
    };
    secure();
    for (const auto& row : rows) {
        const auto genuine = phone.seal(note("genuine"));
        auto envelope = genuine;
        row.change(envelope);
        relay(envelope);
        EXPECT_EQ(takeEvents(), (Udalosti{chyba("Zprávu nejde ověřit: " + row.words)}));
        relay(genuine);
        EXPECT_EQ(takeEvents(), (Udalosti{zprava(note("genuine"))})) << row.words;
    }
}

TEST_F(SecureLinkMessageTest, ClocksMayDifferByThirtySeconds) {
    secure();
    const auto sealedAt = clock.now();
    auto last = phone.seal(note("in time"));
    auto late = phone.seal(note("late"));
    clock.setWallClock(sealedAt + 90s);
    relay(last);
    EXPECT_EQ(takeEvents(), (Udalosti{zprava(note("in time"))}));
    clock.setWallClock(sealedAt + 91s);
    relay(late);
    EXPECT_EQ(takeEvents(),
              (Udalosti{chyba("Zprávu nejde ověřit: Zpráva dorazila mimo dobu své platnosti. Zkontroluj "
                              "hodiny na obou zařízeních.")}));
}

TEST_F(SecureLinkMessageTest, AGenuineEnvelopeWithoutAMessageIsToldInTheSameWay) {
    secure();
    const std::vector<std::pair<std::string, std::string>> rows{
        {"", "Zpráva není platný JSON (bajt 0)."},
        {"{}", "Invalid number of keys found, expected one."},
        {R"({"novinka":{}})", "Zpráva má neznámý druh „novinka“."},
        {R"({"toolProgress":{}})", "Pole „toolProgress.text“ chybí."},
    };
    for (const auto& [plaintext, words] : rows) {
        relay(phone.sealText(plaintext));
        EXPECT_EQ(takeEvents(), (Udalosti{chyba("Zprávu nejde ověřit: " + words)}));
    }
    EXPECT_TRUE(isSecured());
}

TEST_F(SecureLinkMessageTest, SendsASealedMessageThatLivesForAMinute) {
    secure();
    const MacPayload result{MacPayload::ToolResult{true, R"({"ok":true})"}};
    ASSERT_TRUE(poslat(result, "R-7"));
    auto sent = sentEnvelopes().back();
    EXPECT_EQ(sent.kind, EnvelopeKind::data);
    EXPECT_EQ(sent.requestID, "R-7");
    EXPECT_EQ(sent.pair, PairID{"PAIR"});
    EXPECT_EQ(sent.from, identita->deviceID());
    EXPECT_EQ(sent.to, phone.identita->deviceID());
    EXPECT_EQ(sent.createdAt, clock.now());
    EXPECT_EQ(sent.expiresAt, clock.now() + 60s);
    EXPECT_EQ(phone.open(sent).value(), result);
}

TEST_F(SecureLinkMessageTest, SendingWithoutASessionFailsWithMacOfflineAndSendsNothing) {
    auto expectOffline = [this] {
        auto sent = poslat(note("nobody hears"));
        ASSERT_FALSE(sent);
        auto* cause = sent.error().as<TalkSpanError>();
        ASSERT_TRUE(cause);
        EXPECT_TRUE(cause->as<TalkSpanError::MacOffline>());
        EXPECT_EQ(cause->popis().czech(), "Mac není dostupný.");
    };
    expectOffline();
    logIn();
    const auto frames = socket->sent.size();
    expectOffline();
    EXPECT_EQ(socket->sent.size(), frames);
    exchangeHellos();
    socket->breakWith("síť spadla");
    executor.runUntilIdle();
    expectOffline();
}

TEST_F(SecureLinkMessageTest, AFailureToSendPassesOnAndTheNextMessageHasTheNextCounter) {
    secure();
    const auto before = sentEnvelopes().back().counter;
    socket->holdSends();
    auto lost = startSending(note("lost"));
    executor.runUntilIdle();
    EXPECT_FALSE(lost->has_value());
    EXPECT_EQ(sentEnvelopes().back().counter, before + 1);
    socket->breakWith("síť spadla");
    executor.runUntilIdle();
    ASSERT_TRUE(lost->has_value());
    ASSERT_FALSE((*lost)->has_value());
    EXPECT_TRUE((*lost)->error().as<NetworkError>());
    EXPECT_EQ((*lost)->error().popis().czech(), "síť spadla");
}

TEST_F(SecureLinkMessageTest, ManyMessagesAtOnceLeaveInTheOrderOfTheirCounters) {
    secure();
    const auto before = sentEnvelopes().size();
    socket->holdSends();
    std::vector<Sending> sending;
    for (int i = 0; i < 100; ++i) sending.push_back(startSending(note(std::to_string(i))));
    executor.runUntilIdle();
    socket->takeSends();
    executor.runUntilIdle();
    for (const auto& result : sending) EXPECT_TRUE(result->has_value() && (*result)->has_value());
    auto sent = sentEnvelopes();
    ASSERT_EQ(sent.size(), before + 100);
    for (std::size_t i = 0; i < 100; ++i)
        EXPECT_EQ(phone.open(sent[before + i]).value(), note(std::to_string(i)));
}

TEST_F(SecureLinkMessageTest, MessagesInBothDirectionsHaveTheirOwnCounters) {
    secure();
    const auto before = sentEnvelopes().back().counter;
    for (std::uint64_t i = 1; i <= 5; ++i) {
        ASSERT_TRUE(poslat(note("out")));
        EXPECT_EQ(sentEnvelopes().back().counter, before + i);
        EXPECT_TRUE(phone.open(sentEnvelopes().back()));
        relay(phone.seal(note("in")));
        EXPECT_EQ(takeEvents(), (Udalosti{zprava(note("in"))}));
    }
}

} // namespace
} // namespace morvex
