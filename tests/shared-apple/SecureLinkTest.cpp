#include "shared-apple/SecureLink.h"

#include "shared/trust/SessionHandshake.h"
#include "shared/wire/Json.h"
#include "shared/wire/TalkSpanError.h"
#include "tests/support/SecureLinkFixture.h"

#include <set>
#include <string>
#include <utility>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;

/// What the link does on each event of the relay, and how it starts and stops.
class SecureLinkTest : public test::SecureLinkFixture {};

AgreementPublicKey keyOf(const Envelope& hello) {
    return decode<SessionHello>(hello.ciphertext).value().ephemeral;
}

TEST_F(SecureLinkTest, RefusesAPeerWhoseRelayAddressMakesNoSense) {
    auto peer = test::remembered(*phone.identita, DeviceRole::phone);
    for (const char* address : {"", "relay", "https://", "https://relay example"}) {
        peer.relayURL = address;
        auto refused =
            SecureLink::create(identita, peer, DeviceRole::mac, {{executor, clock, sockets}, random});
        ASSERT_FALSE(refused) << address;
        auto* cause = refused.error().as<TalkSpanError>();
        ASSERT_TRUE(cause);
        EXPECT_EQ(*cause,
                  (TalkSpanError{TalkSpanError::NotPaired{Sentence("Uložená adresa relaye nedává smysl.")}}));
    }
}

TEST_F(SecureLinkTest, WithThePeerOnlineIsConnectingThenOfflineThenReady) {
    logIn();
    EXPECT_EQ(takeEvents(), (Udalosti{stav(MacAvailability::Pripojuji{1, 0}), offline}));
    EXPECT_TRUE(hasNoSession());
    exchangeHellos();
    EXPECT_EQ(takeEvents(), (Udalosti{pripraveny, pripraveno}));
    EXPECT_TRUE(isSecured());
    EXPECT_EQ(sockets.urls, (std::vector<std::string>{"wss://relay.example/v1/ws?v=1.4"}));
}

TEST_F(SecureLinkTest, WithThePeerOfflineSendsNoHelloUntilThePeerComes) {
    logIn(false);
    EXPECT_EQ(takeEvents(), (Udalosti{stav(MacAvailability::Pripojuji{1, 0}), offline}));
    EXPECT_TRUE(sentEnvelopes().empty());
    relay(RelayMessage::PeerOnline{true});
    EXPECT_EQ(sentHellos().size(), 1U);
    EXPECT_TRUE(takeEvents().empty());
}

TEST_F(SecureLinkTest, AHelloIsSignedAndTravelsInAKeyExchange) {
    logIn();
    ASSERT_EQ(sentEnvelopes().size(), 1U);
    auto sent = sentEnvelopes().front();
    auto hello = decode<SessionHello>(sent.ciphertext).value();
    EXPECT_TRUE(checkSessionHello(hello, {"PAIR"}, identita->signingKey()));
    EXPECT_EQ(sent, keyExchange({"PAIR"}, identita->deviceID(), phone.identita->deviceID(), "session",
                                toBytes(encode(hello)), clock.now(), *Uuid::parse(sent.msgID)));
}

TEST_F(SecureLinkTest, AHelloThatCannotBeSentIsNobodysConcern) {
    connect();
    socket->deliver(encode(RelayMessage{RelayMessage::Authenticated{true}}));
    socket->breakWith("síť spadla");
    EXPECT_EQ(takeEvents(), (Udalosti{stav(MacAvailability::Pripojuji{1, 0}), offline,
                                      stav(MacAvailability::Preruseno{Sentence("síť spadla")}),
                                      stav(MacAvailability::Pripojuji{2, 1})}));
    EXPECT_TRUE(sentHellos().empty());
}

TEST_F(SecureLinkTest, ALostConnectionDropsTheSessionAndTellsTheNextAttempt) {
    secure();
    socket->breakWith("síť spadla");
    EXPECT_EQ(takeEvents(), (Udalosti{stav(MacAvailability::Preruseno{Sentence("síť spadla")}),
                                      stav(MacAvailability::Pripojuji{2, 1})}));
    EXPECT_TRUE(hasNoSession());
    EXPECT_TRUE(takeEvents().empty());
}

TEST_F(SecureLinkTest, ASessionDoesNotOutliveItsSocket) {
    secure();
    socket->breakWith("síť spadla");
    executor.runUntilIdle();
    reconnect(1s);
    takeEvents();
    relay(RelayMessage::Authenticated{false});
    EXPECT_EQ(takeEvents(), (Udalosti{offline}));
    EXPECT_TRUE(hasNoSession());
}

TEST_F(SecureLinkTest, EveryLoginAndEveryReturnOfThePeerBringsANewKey) {
    logIn();
    relay(RelayMessage::PeerOnline{true});
    relay(RelayMessage::PeerOnline{false});
    relay(RelayMessage::PeerOnline{true});
    std::set<AgreementPublicKey> keys;
    for (const auto& hello : sentHellos()) keys.insert(keyOf(hello));
    EXPECT_EQ(keys.size(), 3U);
    socket->breakWith("síť spadla");
    executor.runUntilIdle();
    reconnect(1s);
    relay(RelayMessage::Authenticated{true});
    EXPECT_FALSE(keys.contains(keyOf(sentHellos().back())));
}

TEST_F(SecureLinkTest, TheReturnOfThePeerDropsTheSessionWithoutAnEvent) {
    secure();
    relay(RelayMessage::PeerOnline{true});
    EXPECT_TRUE(hasNoSession());
    EXPECT_TRUE(takeEvents().empty());
    exchangeHellos();
    EXPECT_EQ(takeEvents(), (Udalosti{pripraveny, pripraveno}));
    EXPECT_TRUE(isSecured());
}

TEST_F(SecureLinkTest, TheLeavingOfThePeerDropsTheSessionAndTheKey) {
    secure();
    relay(RelayMessage::PeerOnline{false});
    EXPECT_EQ(takeEvents(), (Udalosti{offline}));
    EXPECT_TRUE(hasNoSession());
    relay(phone.newHello());
    EXPECT_TRUE(takeEvents().empty());
    EXPECT_TRUE(hasNoSession());
}

TEST_F(SecureLinkTest, EachFailureThatTheRelayTellsDropsTheSessionAndKeepsTheKey) {
    const auto revoked = stav(MacAvailability::NeplatneParovani{Sentence("Zařízení bylo odvoláno.")});
    const std::vector<std::pair<RelayFailure, Udalost>> rows{
        {RelayFailure::protocolMismatch, chyba("Podrobnost.")},
        {RelayFailure::badSignature, chyba("Podrobnost.")},
        {RelayFailure::unknownPair, chyba("Podrobnost.")},
        {RelayFailure::revoked, revoked},
        {RelayFailure::notAuthenticated, chyba("Podrobnost.")},
        {RelayFailure::expired, chyba("Podrobnost.")},
        {RelayFailure::tooLarge, chyba("Podrobnost.")},
        {RelayFailure::rateLimited, chyba("Podrobnost.")},
        {RelayFailure::peerOffline, offline},
        {RelayFailure::malformed, chyba("Podrobnost.")},
    };
    secure();
    for (const auto& [code, expected] : rows) {
        relay(RelayMessage::Failure{code, "Podrobnost."});
        EXPECT_EQ(takeEvents(), (Udalosti{expected})) << rawValue(code);
        EXPECT_TRUE(hasNoSession()) << rawValue(code);
        exchangeHellos();
        EXPECT_EQ(takeEvents(), (Udalosti{pripraveny, pripraveno})) << rawValue(code);
    }
    EXPECT_EQ(sentHellos().size(), 1U);
}

TEST_F(SecureLinkTest, RevokedDuringLoginEndsAsInterruptedAndStaysOff) {
    connect();
    relay(RelayMessage::Failure{RelayFailure::revoked, "Mac byl odebrán."});
    EXPECT_EQ(
        takeEvents(),
        (Udalosti{stav(MacAvailability::Pripojuji{1, 0}),
                  stav(MacAvailability::NeplatneParovani{Sentence("Zařízení bylo odvoláno.")}),
                  stav(MacAvailability::Preruseno{Sentence("Zařízení není spárované. Mac byl odebrán.")})}));
    EXPECT_EQ(clock.waiting(), 0U);
    EXPECT_TRUE(executor.run(link->spustit()));
    EXPECT_TRUE(takeEvents().empty());
    EXPECT_EQ(sockets.urls.size(), 1U);
}

TEST_F(SecureLinkTest, NeverTellsThatTheMacIsBusyOrAsleepOrUnpaired) {
    secure();
    Udalosti seen;
    auto gather = [&] {
        for (auto& event : takeEvents()) seen.push_back(event);
    };
    for (std::size_t code = 0; code < rawValues<RelayFailure>.size(); ++code)
        relay(RelayMessage::Failure{static_cast<RelayFailure>(code), "zaneprázdněný"});
    relay(RelayMessage::PeerOnline{false});
    relay(RelayMessage::PeerOnline{true});
    exchangeHellos();
    socket->breakWith("síť spadla");
    gather();
    std::set<std::size_t> told;
    for (const auto& event : seen)
        if (auto* state = std::get_if<SecureLink::Stav>(&event)) told.insert(state->stav.value.index());
    const std::set<std::size_t> possible{
        MacAvailability{MacAvailability::NeplatneParovani{}}.value.index(),
        MacAvailability{MacAvailability::Pripojuji{}}.value.index(),
        MacAvailability{MacAvailability::Preruseno{}}.value.index(),
        MacAvailability{MacAvailability::Offline{}}.value.index(),
        MacAvailability{MacAvailability::Pripraveny{}}.value.index(),
    };
    EXPECT_EQ(told, possible);
}

TEST_F(SecureLinkTest, StartingARunningLinkChangesNothing) {
    secure();
    EXPECT_TRUE(executor.run(link->spustit()));
    EXPECT_EQ(sockets.urls.size(), 1U);
    EXPECT_TRUE(takeEvents().empty());
    EXPECT_TRUE(isSecured());
}

TEST_F(SecureLinkTest, StoppingDropsTheSessionInSilenceAndMayBeRepeated) {
    secure();
    EXPECT_TRUE(executor.run(link->zastavit()));
    EXPECT_EQ(socket->closed.front(), CloseCode::goingAway);
    EXPECT_TRUE(hasNoSession());
    EXPECT_TRUE(executor.run(link->zastavit()));
    EXPECT_TRUE(takeEvents().empty());
    EXPECT_EQ(clock.waiting(), 0U);
}

TEST_F(SecureLinkTest, StoppingALinkThatNeverStartedDoesNothing) {
    EXPECT_TRUE(executor.run(link->zastavit()));
    EXPECT_TRUE(takeEvents().empty());
    EXPECT_TRUE(sockets.urls.empty());
}

TEST_F(SecureLinkTest, StartsAgainAfterAStop) {
    for (int i = 0; i < 3; ++i) {
        logIn();
        exchangeHellos();
        EXPECT_EQ(takeEvents(),
                  (Udalosti{stav(MacAvailability::Pripojuji{1, 0}), offline, pripraveny, pripraveno}));
        EXPECT_TRUE(isSecured());
        EXPECT_TRUE(executor.run(link->zastavit()));
        EXPECT_TRUE(takeEvents().empty());
    }
}

TEST_F(SecureLinkTest, WhatCameBeforeAStopIsNotToldAfterTheNextStart) {
    secure();
    socket->deliver(encode(RelayMessage{RelayMessage::Forward{phone.seal(note("too late"))}}));
    socket->deliver(encode(RelayMessage{RelayMessage::PeerOnline{false}}));
    socket->breakWith("síť spadla");
    EXPECT_TRUE(executor.run(link->zastavit()));
    takeEvents();
    logIn();
    exchangeHellos();
    EXPECT_EQ(takeEvents(),
              (Udalosti{stav(MacAvailability::Pripojuji{1, 0}), offline, pripraveny, pripraveno}));
    EXPECT_TRUE(isSecured());
}

TEST_F(SecureLinkTest, StartsAgainWhileAStopIsStillEnding) {
    secure();
    executor.start(link->zastavit());
    logIn();
    exchangeHellos();
    EXPECT_TRUE(isSecured());
    EXPECT_EQ(takeEvents().back(), pripraveno);
}

TEST_F(SecureLinkTest, StoppingEndsWhatASlowSocketHolds) {
    secure();
    socket->holdSends();
    auto sending = startSending(note("slow"));
    executor.runUntilIdle();
    EXPECT_FALSE(sending->has_value());
    std::weak_ptr<ScriptedSocket> watched = socket;
    socket.reset();
    EXPECT_TRUE(executor.run(link->zastavit()));
    ASSERT_TRUE(sending->has_value());
    EXPECT_FALSE((*sending)->has_value());
    EXPECT_TRUE(watched.expired());
}

TEST_F(SecureLinkTest, StoppingEndsAHelloThatASlowSocketHolds) {
    logIn(false);
    socket->holdSends();
    relay(RelayMessage::PeerOnline{true});
    EXPECT_EQ(sentHellos().size(), 1U);
    // The listener waits for the hello to leave, so this one waits too.
    relay(RelayMessage::PeerOnline{false});
    takeEvents();
    EXPECT_TRUE(executor.run(link->zastavit()));
    EXPECT_TRUE(takeEvents().empty());
    logIn();
    exchangeHellos();
    EXPECT_TRUE(isSecured());
}

TEST_F(SecureLinkTest, TheRelayIsNotReadWhileTheApplicationTakesNothing) {
    logIn();
    takeEvents();
    listening.request_stop();
    executor.runUntilIdle();
    for (int i = 0; i < 8'500; ++i) relay(RelayMessage::PeerOnline{false});
    socket->deliver("no frame");
    executor.runUntilIdle();
    EXPECT_TRUE(socket->closed.empty()) << "what breaks the connection was not read yet";
}

TEST_F(SecureLinkTest, LongMessagesForABusyApplicationWaitWithTheRelay) {
    secure();
    listening.request_stop();
    executor.runUntilIdle();
    for (int i = 0; i < 5; ++i) relay(phone.seal(note(std::string(1'000'000, 'x'))));
    socket->deliver("no frame");
    executor.runUntilIdle();
    EXPECT_TRUE(socket->closed.empty()) << "what breaks the connection was not read yet";
}

TEST_F(SecureLinkTest, SomeHundredsOfShortMessagesForABusyApplicationHoldNothingUp) {
    secure();
    listening.request_stop();
    executor.runUntilIdle();
    for (int i = 0; i < 400; ++i) relay(phone.seal(note("krátká")));
    socket->deliver("no frame");
    executor.runUntilIdle();
    EXPECT_FALSE(socket->closed.empty());
}

TEST_F(SecureLinkTest, ASessionOfALostConnectionIsNotUsedOnTheNextOneWhileTheApplicationIsBusy) {
    secure();
    listening.request_stop();
    executor.runUntilIdle();
    for (int i = 0; i < 3; ++i) relay(phone.seal(note(std::string(1'000'000, 'x'))));
    socket->breakWith("síť spadla");
    executor.runUntilIdle();
    socket = sockets.layOut();
    pass(1s);
    EXPECT_TRUE(hasNoSession());
    EXPECT_TRUE(socket->sent.empty()) << "on the new connection, before its challenge";
    relay(RelayMessage::Challenge{toBytes("výzva"), ProtocolVersion::current});
    EXPECT_TRUE(hasNoSession());
    EXPECT_TRUE(sentEnvelopes().empty()) << "before its login";
    relay(RelayMessage::Authenticated{true});
    EXPECT_TRUE(hasNoSession());
    ASSERT_EQ(sentEnvelopes().size(), 1U) << "after its login";
    EXPECT_EQ(sentHellos().size(), 1U);
}

/// The application takes nothing, and behind what it would take a connection ends.
class LeftMessagesTest : public SecureLinkTest {
  protected:
    void loseTheConnectionBehind(int messages) {
        for (int i = 0; i < messages; ++i) relay(phone.seal(note(std::string(1'000'000, 'x'))));
        socket->breakWith("síť spadla");
        executor.runUntilIdle();
    }

    void secureAnew() {
        reconnect(1s);
        relay(RelayMessage::Authenticated{true});
        ASSERT_FALSE(sentHellos().empty()) << "the new connection is not looked at";
        exchangeHellos();
    }

    void SetUp() override {
        secure();
        listening.request_stop();
        executor.runUntilIdle();
    }
};

TEST_F(LeftMessagesTest, ANewConnectionGetsItsSessionWhileTheyWait) {
    loseTheConnectionBehind(8);
    EXPECT_TRUE(hasNoSession());
    secureAnew();
    EXPECT_TRUE(isSecured());
}

TEST_F(LeftMessagesTest, NothingIsSealedForAConnectionThatIsOver) {
    loseTheConnectionBehind(8);
    const auto sent = socket->sent.size();
    EXPECT_TRUE(hasNoSession());
    EXPECT_EQ(socket->sent.size(), sent);
}

TEST_F(LeftMessagesTest, ConnectionsThatComeAndGoLeaveABoundedNumberBehind) {
    const auto isTriedAgain = [this] {
        const auto tries = sockets.urls.size();
        pass(1s);
        return sockets.urls.size() > tries;
    };
    int connections = 0;
    while (connections < 40) {
        loseTheConnectionBehind(4);
        socket = sockets.layOut();
        if (!isTriedAgain()) break;
        relay(RelayMessage::Challenge{toBytes("výzva"), ProtocolVersion::current});
        relay(RelayMessage::Authenticated{true});
        if (sentHellos().empty()) break;
        exchangeHellos();
        ++connections;
    }
    EXPECT_GT(connections, 4);
    EXPECT_LT(connections, 12);
}

} // namespace
} // namespace morvex
