#include "shared-apple/MessageTooLong.h"
#include "tests/shared-apple/RelayLinkFixture.h"

namespace morvex {
namespace {

using namespace std::chrono_literals;
using Udalost = RelayLink::Udalost;
using RelayLinkLimits = test::RelayLinkFixture;
using test::challenge;
using test::collect;
using test::frame;

TEST_F(RelayLinkLimits, ARelayThatSaysNothingBeforeTheLoginIsLeftAfterAMinute) {
    for (bool challenges : {false, true}) {
        auto socket = sockets.layOut();
        executor.start(link.start());
        executor.runUntilIdle();
        if (challenges) socket->deliver(challenge());
        pass(59s);
        EXPECT_TRUE(socket->closed.empty());
        pass(1s);
        ASSERT_FALSE(socket->closed.empty());
        EXPECT_EQ(socket->closed.front(), CloseCode::abnormal);
        EXPECT_EQ(takeEvents().back(), (Udalost{RelayLink::Pripojuji{2, 1}}));
        EXPECT_TRUE(executor.run(link.stop()));
        takeEvents();
    }
}

TEST_F(RelayLinkLimits, TheLimitOfTheLoginDoesNotTouchALinkThatIsLoggedIn) {
    auto socket = logIn();
    for (int i = 0; i < 10; ++i) {
        pass(20s);
        socket->pong();
        executor.runUntilIdle();
    }
    EXPECT_TRUE(socket->closed.empty());
}

TEST_F(RelayLinkLimits, SignsNoNonceThatBeginsLikeATextOfItsOwn) {
    executor.start(link.start());
    for (const char* text : {"ts-session-hello|PAIR|MAC|AAAA", "ts-pair-hello|PAIR|MAC|AAAA", "ts-",
                             "revoke|PAIR|PHONE|MAC|1800000000"}) {
        auto socket = sockets.layOut();
        executor.runUntilIdle();
        pass(31s);
        socket->deliver(frame(RelayMessage::Challenge{toBytes(text), ProtocolVersion::current}));
        auto events = takeEvents();
        EXPECT_TRUE(socket->sent.empty()) << text;
        EXPECT_EQ(events[events.size() - 2],
                  (Udalost{RelayLink::Odpojeno{Sentence("Zařízení není spárované. Relay neposlal výzvu.")}}));
    }
}

TEST_F(RelayLinkLimits, SendsNoFrameThatTheOtherSideWouldNotTake) {
    auto socket = logIn();
    takeEvents();
    auto longest = envelope();
    longest.requestID = "";
    const auto rest = encode(RelayMessage{RelayMessage::Forward{longest}}).size();
    longest.requestID = std::string(frameLimit - rest, 'x');
    EXPECT_TRUE(send(longest));
    EXPECT_EQ(socket->sent.back().size(), frameLimit);

    const auto count = socket->sent.size();
    longest.requestID += 'x';
    const auto refused = send(longest);
    ASSERT_FALSE(refused);
    EXPECT_TRUE(refused.error().as<MessageTooLong>());
    EXPECT_EQ(refused.error().popis().czech(), "Zpráva je na přenos příliš dlouhá.");
    EXPECT_EQ(socket->sent.size(), count);
    EXPECT_TRUE(send(envelope()));
    EXPECT_TRUE(takeEvents().empty());
}

TEST_F(RelayLinkLimits, ReadsNothingMoreWhileAnEventWaits) {
    auto socket = logIn();
    listening.request_stop();
    executor.runUntilIdle();
    socket->deliver(frame(RelayMessage::PeerOnline{false}));
    socket->deliver(frame(RelayMessage::PeerOnline{true}));
    socket->deliver("no frame");
    executor.runUntilIdle();
    EXPECT_TRUE(socket->closed.empty()) << "what breaks the connection was not read yet";
    std::stop_source again;
    takeEvents();
    executor.start(collect(link, events, again.get_token()));
    auto seen = takeEvents();
    ASSERT_GE(seen.size(), 3U);
    EXPECT_EQ(seen[0], (Udalost{RelayLink::Protejsek{false}}));
    EXPECT_EQ(seen[1], (Udalost{RelayLink::Protejsek{true}}));
    EXPECT_FALSE(socket->closed.empty());
    EXPECT_TRUE(executor.run(link.stop()));
    again.request_stop();
    executor.runUntilIdle();
}

TEST_F(RelayLinkLimits, NoPongIsNoSignOfDeathWhileThisEndHoldsBackReading) {
    auto socket = logIn();
    takeEvents();
    socket->holdBack();
    for (int i = 0; i < 10; ++i) {
        pass(20s);
        pass(10s);
    }
    EXPECT_TRUE(socket->closed.empty());
    EXPECT_EQ(socket->pings, 10) << "a broken connection is noticed by writing";
    socket->deliver(frame(RelayMessage::PeerOnline{true}));
    EXPECT_EQ(takeEvents(), (std::vector<Udalost>{RelayLink::Protejsek{true}}));
}

TEST_F(RelayLinkLimits, AHoldingBackThatEndedMeanwhileStartsTheTimeOfThePongAnew) {
    auto socket = logIn();
    socket->holdBack();
    pass(20s);
    socket->readOn();
    pass(10s);
    EXPECT_TRUE(socket->closed.empty()) << "the pong may lie behind what is read only now";

    pass(20s);
    socket->holdBack();
    socket->readOn();
    pass(10s);
    EXPECT_TRUE(socket->closed.empty());
}

TEST_F(RelayLinkLimits, ADeadSocketIsNoticedOnceThisEndReadsAgain) {
    auto socket = logIn();
    socket->holdBack();
    pass(60s);
    socket->readOn();
    takeEvents();
    for (int i = 0; i < 6; ++i) pass(10s);
    ASSERT_FALSE(socket->closed.empty());
    EXPECT_EQ(socket->closed[0], CloseCode::abnormal);
    EXPECT_TRUE(std::holds_alternative<RelayLink::Odpojeno>(takeEvents()[0]));
}

TEST_F(RelayLinkLimits, AResetIsToldWhileThisEndHoldsBackReading) {
    auto socket = logIn();
    takeEvents();
    socket->holdBack();
    pass(30s);
    socket->breakWith("spojení spadlo");
    EXPECT_EQ(takeEvents()[0], (Udalost{RelayLink::Odpojeno{Sentence("spojení spadlo")}}));
}

TEST_F(RelayLinkLimits, WhatWasReadBeforeASilentEndIsTold) {
    auto socket = logIn();
    listening.request_stop();
    executor.runUntilIdle();
    for (int i = 0; i < 5; ++i) socket->deliver(frame(RelayMessage::PeerOnline{true}));
    pass(20s);
    pass(10s);
    ASSERT_FALSE(socket->closed.empty());
    std::stop_source again;
    takeEvents();
    executor.start(collect(link, events, again.get_token()));
    auto seen = takeEvents();
    ASSERT_GE(seen.size(), 6U);
    for (std::size_t i = 0; i < 5; ++i) EXPECT_EQ(seen[i], (Udalost{RelayLink::Protejsek{true}}));
    EXPECT_TRUE(std::holds_alternative<RelayLink::Odpojeno>(seen[5]));
    EXPECT_TRUE(executor.run(link.stop()));
    again.request_stop();
    executor.runUntilIdle();
}

TEST_F(RelayLinkLimits, OfWhatTheRelaySaysOnlyWhatAPersonReadsIsKept) {
    auto socket = logIn();
    takeEvents();
    socket->deliver(frame(RelayMessage::Failure{RelayFailure::rateLimited, std::string(501, 'x')}));
    EXPECT_EQ(takeEvents(),
              (std::vector<Udalost>{RelayLink::Selhalo{RelayFailure::rateLimited, std::string(500, 'x')}}));
}

TEST_F(RelayLinkLimits, ACharacterWithoutEndIsCutToo) {
    auto socket = logIn();
    takeEvents();
    std::string character = "a";
    for (int i = 0; i < 100'000; ++i) character += "\u0301";
    socket->deliver(frame(RelayMessage::Failure{RelayFailure::rateLimited, character}));
    const auto seen = takeEvents();
    ASSERT_EQ(seen.size(), 1U);
    EXPECT_LE(std::get<RelayLink::Selhalo>(seen[0]).detail.size(), 4'000U);
}

TEST_F(RelayLinkLimits, OfAVersionThatIsNoneOnlyTheBeginningIsTold) {
    auto socket = logIn();
    takeEvents();
    auto challenge = encode(RelayMessage{RelayMessage::Challenge{{}, ProtocolVersion::current}});
    const auto version = '"' + ProtocolVersion::current.text() + '"';
    challenge.replace(challenge.find(version), version.size(), '"' + std::string(1'000'000, '1') + '"');
    socket->deliver(challenge);
    const auto seen = takeEvents();
    ASSERT_FALSE(seen.empty());
    EXPECT_LT(std::get<RelayLink::Odpojeno>(seen[0]).duvod.czech().size(), 300U);
}

} // namespace
} // namespace morvex
