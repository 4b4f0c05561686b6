#include "tests/support/PairingHarness.h"

namespace morvex {
namespace {

/// How the link of a pairing ends, and what a second press does.
using PairingEndsTest = PairingHarness;

TEST_F(PairingEndsTest, AgreeingEndsTheLinkOfThePairing) {
    start();
    auto socket = beginPairing();
    sendHello(hello());
    EXPECT_TRUE(socket->closed.empty());
    agree();
    EXPECT_FALSE(socket->closed.empty());
}

TEST_F(PairingEndsTest, CancellingEndsTheLinkOfThePairing) {
    start();
    auto socket = beginPairing();
    flow().zrusitParovani();
    executor.runUntilIdle();
    EXPECT_FALSE(socket->closed.empty());
}

TEST_F(PairingEndsTest, ANewStartEndsTheLinkOfThePairingBefore) {
    start();
    auto first = beginPairing("FIRST");
    auto second = beginPairing("SECOND");
    EXPECT_FALSE(first->closed.empty());
    EXPECT_TRUE(second->closed.empty());
}

TEST_F(PairingEndsTest, AfterACancelNumberAndHelloOfThatPairingCountForNothing) {
    start();
    beginPairing();
    sendHello(hello());
    const auto shown = number();
    flow().zrusitParovani();
    flow().potvrditCislo(shown);
    sendHello(hello());
    EXPECT_EQ(state(), StavParovani{});
    EXPECT_EQ(store.peerSaves, 0);
}

TEST_F(PairingEndsTest, AgreeingTwiceKeepsThePeerOnce) {
    start();
    beginPairing();
    sendHello(hello());
    const auto connections = sockets.urls.size();
    sockets.layOut();
    for (int i = 0; i < 2; ++i) flow().potvrditCislo(number());
    executor.runUntilIdle();
    EXPECT_EQ(store.peerSaves, 1);
    EXPECT_EQ(sockets.urls.size(), connections + 1);
}

TEST_F(PairingEndsTest, AgreeingAgainAfterAFailedSaveTriesAgain) {
    agreeInVain();
    store.failSave.reset();
    sendHello(hello());
    agree();
    EXPECT_EQ(store.peerSaves, 2);
    EXPECT_TRUE(store.held.nactiProtejsek().value());
}

TEST_F(PairingEndsTest, NothingIsUnpairedOnceTheProgramEnds) {
    startSecured();
    TaskScope ending(executor);
    ending.spawn(companion->shutDown());
    executor.runUntilIdle();
    flow().odvolat();
    executor.runUntilIdle();
    EXPECT_TRUE(companion->stav().protejsek.value()) << "nothing is shown as done that is not done";
    EXPECT_TRUE(store.held.nactiProtejsek().value());
    features.reset();
    companion.reset();
}

TEST_F(PairingEndsTest, NoPairingBeginsOnceTheProgramEnds) {
    start();
    TaskScope ending(executor);
    ending.spawn(companion->shutDown());
    executor.runUntilIdle();
    const auto asked = http.requests.size();
    flow().zacitParovani();
    executor.runUntilIdle();
    EXPECT_EQ(http.requests.size(), asked);
    EXPECT_TRUE(companion->stav().parovani.value().as<StavParovani::Necinne>());
    features.reset();
    companion.reset();
}

} // namespace
} // namespace morvex
