#include "shared-apple/RelayLink.h"

#include "shared/trust/Crypto.h"
#include "shared/wire/Json.h"
#include "shared/wire/TalkSpanError.h"
#include "tests/shared-apple/RelayLinkFixture.h"

#include <gtest/gtest.h>

#include <utility>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using Udalost = RelayLink::Udalost;
using RelayLinkTest = test::RelayLinkFixture;
using test::challenge;
using test::collect;
using test::frame;

TEST_F(RelayLinkTest, WaitsLongerAfterEveryFailureUpToThirtySeconds) {
    executor.start(link.start());
    executor.runUntilIdle();
    EXPECT_EQ(takeEvents(), (std::vector<Udalost>{RelayLink::Pripojuji{1, 0},
                                                  RelayLink::Odpojeno{Sentence("spojení odmítnuto")},
                                                  RelayLink::Pripojuji{2, 1}}));
    const std::vector<std::pair<int, int>> later{{3, 2}, {4, 5}, {5, 10}, {6, 20}, {7, 30}, {8, 30}, {9, 30}};
    int wait = 1;
    for (auto [pokus, zat] : later) {
        EXPECT_EQ(clock.untilNext(), std::chrono::seconds(wait));
        pass(std::chrono::seconds(wait));
        EXPECT_EQ(takeEvents(),
                  (std::vector<Udalost>{RelayLink::Odpojeno{Sentence("spojení odmítnuto")},
                                        RelayLink::Pripojuji{pokus, static_cast<double>(zat)}}));
        wait = zat;
    }
}

TEST_F(RelayLinkTest, ConnectsToTheSocketAddressWithTheVersion) {
    logIn();
    EXPECT_EQ(sockets.urls, std::vector<std::string>{"wss://relay.example/base/v1/ws?v=1.4"});
}

TEST_F(RelayLinkTest, SignsTheRawNonceAndTellsWhoIsThere) {
    auto socket = logIn();
    ASSERT_EQ(socket->sent.size(), 1U);
    auto message = decode<RelayMessage>(socket->sent[0]).value();
    auto* sent = message.as<RelayMessage::Authenticate>();
    ASSERT_TRUE(sent);
    EXPECT_EQ(sent->pair, PairID{"PAIR"});
    EXPECT_EQ(sent->device, identita->deviceID());
    EXPECT_EQ(sent->key, identita->signingKey());
    EXPECT_TRUE(ed25519Verify(sent->signature, asBytes("výzva"), identita->signingKey().raw));
    EXPECT_EQ(takeEvents(), (std::vector<Udalost>{RelayLink::Pripojuji{1, 0}, RelayLink::Prihlaseno{true}}));
}

TEST_F(RelayLinkTest, ALoginResetsTheWaits) {
    executor.start(link.start());
    executor.runUntilIdle();
    pass(1s);
    pass(2s);
    auto socket = sockets.layOut();
    pass(5s);
    socket->deliver(challenge());
    socket->deliver(frame(RelayMessage::Authenticated{false}));
    takeEvents();
    socket->breakWith("přerušeno");
    EXPECT_EQ(takeEvents(),
              (std::vector<Udalost>{RelayLink::Odpojeno{Sentence("přerušeno")}, RelayLink::Pripojuji{2, 1}}));
}

TEST_F(RelayLinkTest, AnotherMinorVersionIsAcceptedAndAnotherMajorRefusedBeforeAnythingIsSigned) {
    auto first = sockets.layOut();
    executor.start(link.start());
    executor.runUntilIdle();
    first->deliver(challenge("2.0"));
    takeEvents();
    EXPECT_TRUE(first->sent.empty());
    auto second = sockets.layOut();
    pass(1s);
    second->deliver(challenge("1.9"));
    executor.runUntilIdle();
    EXPECT_EQ(second->sent.size(), 1U);
}

TEST_F(RelayLinkTest, AForeignVersionIsToldInTheSentenceForTheUser) {
    auto socket = sockets.layOut();
    executor.start(link.start());
    executor.runUntilIdle();
    socket->deliver(challenge("2.0"));
    auto seen = takeEvents();
    ASSERT_EQ(seen.size(), 3U);
    EXPECT_EQ(seen[1], Udalost(RelayLink::Odpojeno{Sentence(
                           "Telefon a Mac mluví jinou verzí protokolu (1.4 proti 2.0). Aktualizuj tu starší "
                           "aplikaci.")}));
}

TEST_F(RelayLinkTest, WordsForARelayThatDoesNotKeepToTheLogin) {
    struct Row {
        std::vector<std::string> frames;
        std::string duvod;
    };

    const std::vector<Row> rows{
        {{frame(RelayMessage::PeerOnline{true})}, "Zařízení není spárované. Relay neposlal výzvu."},
        {{challenge(), frame(RelayMessage::PeerOnline{true})},
         "Zařízení není spárované. Nečekaná odpověď na přihlášení."},
        {{challenge(), challenge()}, "Zařízení není spárované. Nečekaná odpověď na přihlášení."},
    };
    executor.start(link.start());
    takeEvents();
    for (const auto& row : rows) {
        auto socket = sockets.layOut();
        pass(30s);
        for (const auto& text : row.frames) socket->deliver(text);
        auto seen = takeEvents();
        ASSERT_EQ(seen.size(), 2U);
        EXPECT_EQ(seen[0], Udalost(RelayLink::Odpojeno{Sentence(row.duvod)}));
    }
}

TEST_F(RelayLinkTest, GivesUpOnFailuresAtLoginThatDoNotHeal) {
    for (auto code : {RelayFailure::protocolMismatch, RelayFailure::unknownPair, RelayFailure::revoked}) {
        auto socket = sockets.layOut();
        executor.start(link.start());
        executor.runUntilIdle();
        socket->deliver(challenge());
        socket->deliver(frame(RelayMessage::Failure{code, "Konec."}));
        EXPECT_EQ(takeEvents(),
                  (std::vector<Udalost>{RelayLink::Pripojuji{1, 0}, RelayLink::Selhalo{code, "Konec."},
                                        RelayLink::Odpojeno{Sentence("Zařízení není spárované. Konec.")}}));
        EXPECT_EQ(clock.waiting(), 0U);
    }
}

TEST_F(RelayLinkTest, TriesAgainAfterABadSignatureAndOtherFailuresAtLogin) {
    executor.start(link.start());
    takeEvents();
    std::size_t tries = sockets.urls.size();
    for (auto code : {RelayFailure::badSignature, RelayFailure::notAuthenticated, RelayFailure::expired,
                      RelayFailure::tooLarge, RelayFailure::rateLimited, RelayFailure::peerOffline,
                      RelayFailure::malformed}) {
        auto socket = sockets.layOut();
        pass(30s);
        ASSERT_EQ(sockets.urls.size(), ++tries) << rawValue(code);
        socket->deliver(challenge());
        socket->deliver(frame(RelayMessage::Failure{code, "Ne."}));
        auto seen = takeEvents();
        ASSERT_EQ(seen.size(), 3U) << rawValue(code);
        EXPECT_EQ(seen[0], Udalost(RelayLink::Selhalo{code, "Ne."}));
        EXPECT_EQ(seen[1], Udalost(RelayLink::Odpojeno{Sentence("Zařízení není spárované. Ne.")}));
        EXPECT_TRUE(std::holds_alternative<RelayLink::Pripojuji>(seen[2])) << rawValue(code);
    }
}

TEST_F(RelayLinkTest, ALostSocketIsForgotten) {
    std::weak_ptr<ScriptedSocket> watched = logIn();
    watched.lock()->breakWith("síť spadla");
    takeEvents();
    login.reset();
    EXPECT_TRUE(watched.expired());
}

TEST_F(RelayLinkTest, AFailureAfterLoginChangesNothingInTheLink) {
    auto socket = logIn();
    takeEvents();
    socket->deliver(frame(RelayMessage::Failure{RelayFailure::revoked, "Pryč."}));
    socket->deliver(frame(RelayMessage::PeerOnline{false}));
    EXPECT_EQ(takeEvents(), (std::vector<Udalost>{RelayLink::Selhalo{RelayFailure::revoked, "Pryč."},
                                                  RelayLink::Protejsek{false}}));
    EXPECT_TRUE(send(envelope()));
}

TEST_F(RelayLinkTest, HandsEnvelopesUpFromTextAndBinaryFramesAndIgnoresLoginFrames) {
    auto socket = logIn();
    takeEvents();
    auto text = frame(RelayMessage::Forward{envelope()});
    socket->deliver(text);
    socket->deliver(challenge());
    socket->deliver(frame(RelayMessage::Authenticated{true}));
    socket->deliver(text, WebSocketFrame::Kind::binary);
    auto seen = takeEvents();
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_EQ(seen[0], seen[1]);
    EXPECT_EQ(std::get<RelayLink::Obalka>(seen[0]).envelope.requestID, "session");
}

TEST_F(RelayLinkTest, AnUndecodableFrameEndsTheConnection) {
    for (const std::string bad : {R"({"failure":{"code":"novinka","detail":""}})", "{}", "ne"}) {
        auto socket = sockets.layOut();
        executor.start(link.start());
        executor.runUntilIdle();
        socket->deliver(challenge());
        socket->deliver(frame(RelayMessage::Authenticated{true}));
        takeEvents();
        socket->deliver(bad);
        auto seen = takeEvents();
        ASSERT_EQ(seen.size(), 2U);
        EXPECT_TRUE(std::holds_alternative<RelayLink::Odpojeno>(seen[0]));
        executor.run(link.stop());
    }
}

TEST_F(RelayLinkTest, AFrameOfAnotherKindIsRefusedInWords) {
    auto socket = logIn();
    takeEvents();
    socket->deliver("", WebSocketFrame::Kind::other);
    EXPECT_EQ(takeEvents()[0], Udalost(RelayLink::Odpojeno{Sentence("Neznámý druh rámce.")}));
}

TEST_F(RelayLinkTest, SendDuringAWaitFailsAndTouchesNoEvent) {
    executor.start(link.start());
    takeEvents();
    auto sent = send(envelope());
    ASSERT_FALSE(sent);
    EXPECT_TRUE(sent.error().as<TalkSpanError>());
    EXPECT_EQ(sent.error().popis().czech(), "Mac není dostupný.");
    EXPECT_TRUE(takeEvents().empty());
}

TEST_F(RelayLinkTest, NothingIsSentOnASocketThatHasNotLoggedIn) {
    auto socket = logIn();
    takeEvents();
    ASSERT_TRUE(send(envelope()));
    socket->breakWith("síť spadla");
    auto next = sockets.layOut();
    executor.runUntilIdle();
    pass(1s);
    EXPECT_EQ(send(envelope()).error().popis().czech(), "Mac není dostupný.");
    EXPECT_TRUE(next->sent.empty());
    next->deliver(challenge());
    EXPECT_EQ(send(envelope()).error().popis().czech(), "Mac není dostupný.");
    EXPECT_EQ(next->sent.size(), 1U) << "the answer to the challenge";
}

TEST_F(RelayLinkTest, WhatBelongsToAnEarlierLoginIsNotSentInALaterOne) {
    auto first = logIn();
    takeEvents();
    const auto earlier = login;
    first->breakWith("síť spadla");
    auto second = sockets.layOut();
    executor.runUntilIdle();
    pass(1s);
    second->deliver(challenge());
    second->deliver(frame(RelayMessage::Authenticated{true}));
    takeEvents();
    EXPECT_FALSE(executor.run(link.send(envelope(), earlier)).value());
    EXPECT_TRUE(send(envelope()));
    EXPECT_EQ(second->sent.size(), 2U);
}

TEST_F(RelayLinkTest, PingsEveryTwentySecondsAndGoesOnAfterAPong) {
    auto socket = logIn();
    pass(20s);
    EXPECT_EQ(socket->pings, 1);
    socket->pong();
    executor.runUntilIdle();
    pass(19s);
    EXPECT_EQ(socket->pings, 1);
    pass(1s);
    EXPECT_EQ(socket->pings, 2);
    EXPECT_TRUE(socket->closed.empty());
}

TEST_F(RelayLinkTest, ClosesWith1006WhenNoPongComesInTenSeconds) {
    auto socket = logIn();
    takeEvents();
    pass(20s);
    pass(9s);
    EXPECT_TRUE(socket->closed.empty());
    pass(1s);
    ASSERT_FALSE(socket->closed.empty());
    EXPECT_EQ(socket->closed[0], CloseCode::abnormal);
    auto seen = takeEvents();
    ASSERT_EQ(seen.size(), 2U);
    EXPECT_TRUE(std::holds_alternative<RelayLink::Odpojeno>(seen[0]));
    EXPECT_EQ(seen[1], Udalost(RelayLink::Pripojuji{2, 1}));
}

TEST_F(RelayLinkTest, APingThatFailsClosesWithoutWaitingForThePong) {
    auto socket = logIn();
    pass(20s);
    EXPECT_TRUE(socket->closed.empty());
    socket->refusePong();
    takeEvents();
    ASSERT_FALSE(socket->closed.empty());
    EXPECT_EQ(socket->closed[0], CloseCode::abnormal);
    EXPECT_EQ(clock.untilNext(), 1s) << "only the wait before the next attempt";
}

TEST_F(RelayLinkTest, APongAfterTheTimerDoesNothing) {
    auto socket = logIn();
    pass(20s);
    clock.advance(10s);
    socket->pong();
    executor.runUntilIdle();
    ASSERT_FALSE(socket->closed.empty());
    EXPECT_EQ(socket->closed[0], CloseCode::abnormal);
}

TEST_F(RelayLinkTest, StopSaysGoodbyeAndMayBeRepeated) {
    auto socket = logIn();
    takeEvents();
    EXPECT_TRUE(executor.run(link.stop()));
    ASSERT_FALSE(socket->closed.empty());
    EXPECT_EQ(socket->closed[0], CloseCode::goingAway);
    EXPECT_TRUE(executor.run(link.stop()));
    EXPECT_TRUE(takeEvents().empty());
    EXPECT_EQ(clock.waiting(), 0U);
}

TEST_F(RelayLinkTest, StopDuringAPingWaitsForNoTimer) {
    auto socket = logIn();
    pass(20s);
    EXPECT_TRUE(executor.run(link.stop()));
    EXPECT_EQ(clock.waiting(), 0U);
}

TEST_F(RelayLinkTest, StartWhileRunningChangesNothingNotEvenTheAttempt) {
    executor.start(link.start());
    executor.runUntilIdle();
    pass(1s);
    takeEvents();
    executor.start(link.start());
    EXPECT_TRUE(takeEvents().empty());
    pass(2s);
    EXPECT_EQ(events.back(), Udalost(RelayLink::Pripojuji{4, 5}));
}

TEST_F(RelayLinkTest, StartsAgainAfterAStopFromTheFirstAttempt) {
    executor.start(link.start());
    executor.runUntilIdle();
    pass(1s);
    executor.run(link.stop());
    takeEvents();
    auto socket = logIn();
    EXPECT_EQ(takeEvents(), (std::vector<Udalost>{RelayLink::Pripojuji{1, 0}, RelayLink::Prihlaseno{true}}));
    EXPECT_EQ(socket->sent.size(), 1U);
}

TEST_F(RelayLinkTest, StopWhileAFrameIsOnItsWayEndsTheConnectionInPeace) {
    auto socket = logIn();
    takeEvents();
    socket->deliver(frame(RelayMessage::PeerOnline{false}));
    EXPECT_TRUE(executor.run(link.stop()));
    for (const auto& event : takeEvents()) EXPECT_EQ(event, Udalost(RelayLink::Protejsek{false}));
    EXPECT_EQ(socket->closed.front(), CloseCode::goingAway);
    EXPECT_EQ(clock.waiting(), 0U);
    EXPECT_EQ(sockets.urls.size(), 1U);
}

} // namespace
} // namespace morvex
