#include "shared/wire/Json.h"
#include "tests/support/CompanionHarness.h"

namespace morvex {
namespace {

using namespace std::chrono_literals;
using CompanionTest = CompanionHarness;

TEST_F(CompanionTest, WithoutAPeerStaysUnpairedAndConnectsNowhere) {
    start();
    EXPECT_EQ(availability(), "Nespárováno");
    EXPECT_TRUE(sockets.urls.empty());
    EXPECT_EQ(trouble(), "none");
}

TEST_F(CompanionTest, MakesAnIdentityOnceAndKeepsIt) {
    start();
    auto first = store.held.nactiIdentitu().value();
    ASSERT_TRUE(first);
    end();
    start();
    EXPECT_EQ(store.held.nactiIdentitu().value()->deviceID(), first->deviceID());
}

TEST_F(CompanionTest, AStoreThatFailsAtStartEndsTheStart) {
    for (auto* failure : {&store.failLoad, &store.failSave, &store.failPeerLoad}) {
        *failure = TextError{"Trezor odmítl."};
        start();
        EXPECT_EQ(availability(), "Párování neplatí — Trezor odmítl.");
        EXPECT_EQ(trouble(), "Trezor odmítl.");
        EXPECT_EQ(features->agents.stav().claude.value().problem, "Zjišťuji…") << "no refresh ran";
        end();
        failure->reset();
        (void)store.held.smazIdentitu();
    }
}

TEST_F(CompanionTest, AnEndDuringTheStartIsClean) {
    mac = std::make_shared<const DeviceIdentity>(DeviceIdentity::generate());
    (void)store.held.ulozIdentitu(mac);
    (void)store.held.ulozProtejsek(phone.asPeer());
    make();
    auto starting = std::make_shared<TaskScope>(executor);
    starting->spawn(companion->spustit());
    EXPECT_TRUE(executor.run(companion->shutDown()));
    executor.runUntilIdle();
    EXPECT_EQ(starting->live(), 0);
    EXPECT_TRUE(sockets.urls.empty());
    features.reset();
    companion.reset();
}

TEST_F(CompanionTest, ConnectsToTheRelayOfThePeerAndBecomesReady) {
    auto socket = startPaired();
    EXPECT_EQ(sockets.urls, std::vector<std::string>{"ws://relay.example/v1/ws?v=1.4"});
    EXPECT_EQ(availability(), "Připojuji…");
    logInBeforeThePhone();
    executor.runUntilIdle();
    EXPECT_EQ(availability(), "Připraven");
}

TEST_F(CompanionTest, APeerWithAnUnusableRelayAddressIsToldAndTheRefreshRunsAllTheSame) {
    mac = std::make_shared<const DeviceIdentity>(DeviceIdentity::generate());
    (void)store.held.ulozIdentitu(mac);
    (void)store.held.ulozProtejsek(phone.asPeer("nesmysl"));
    start();
    EXPECT_EQ(availability(),
              "Párování neplatí — Zařízení není spárované. Uložená adresa relaye nedává smysl.");
    EXPECT_EQ(trouble(), "Zařízení není spárované. Uložená adresa relaye nedává smysl.");
    EXPECT_NE(features->agents.stav().claude.value().problem, "Zjišťuji…");
    EXPECT_TRUE(store.held.nactiProtejsek().value()) << "the peer is not forgotten";
}

TEST_F(CompanionTest, ReadyClearsTheTroubleAndSendsTheStatusEachTime) {
    auto socket = startPaired();
    phone.logIn();
    executor.runUntilIdle();
    EXPECT_EQ(trouble(), "Stav se nepodařilo odeslat: Mac není dostupný.");
    phone.exchangeHellos();
    EXPECT_EQ(takeStatuses().size(), 1U);
    EXPECT_EQ(trouble(), "none");

    auto second = sockets.layOut();
    socket->breakWith("přerušeno");
    executor.runUntilIdle();
    EXPECT_EQ(trouble(), "přerušeno");
    clock.advance(1s);
    executor.runUntilIdle();
    phone.attach(second, *mac);
    phone.logIn();
    executor.runUntilIdle();
    phone.exchangeHellos();
    EXPECT_EQ(takeStatuses().size(), 1U);
}

TEST_F(CompanionTest, AnErrorOfTheLinkIsShownAndTheLinkStays) {
    startSecured();
    phone.deliver({RelayMessage::Forward{keyExchange(phone.pair, phone.identity.deviceID(), mac->deviceID(),
                                                     "session", toBytes("ne"), clock.now(), {})}});
    executor.runUntilIdle();
    EXPECT_EQ(trouble(), "Protějšek poslal představení, kterému nerozumím.");
    EXPECT_EQ(availability(), "Připraven");
    EXPECT_TRUE(call("mac.status", "{}").ok);
}

TEST_F(CompanionTest, ARevokedPairDeletesThePeerEvenWhenNobodyPairs) {
    startSecured();
    ASSERT_EQ(companion->stav().parovani.value(), StavParovani{}) << "the view of the pairing is closed";
    phone.deliver({RelayMessage::Failure{RelayFailure::revoked, "Pryč."}});
    executor.runUntilIdle();
    EXPECT_EQ(availability(), "Párování neplatí — Zařízení bylo odvoláno.");
    EXPECT_FALSE(companion->stav().protejsek.value());
    EXPECT_FALSE(store.held.nactiProtejsek().value());
    end();
    start();
    EXPECT_EQ(availability(), "Nespárováno");
}

TEST_F(CompanionTest, ARefusedRemovalOfARevokedPeerIsTriedAgainAtTheNextRevocation) {
    startSecured();
    store.failDelete = TextError{"Trezor odmítl."};
    phone.deliver({RelayMessage::Failure{RelayFailure::revoked, "Pryč."}});
    executor.runUntilIdle();
    EXPECT_FALSE(companion->stav().protejsek.value());
    EXPECT_TRUE(store.held.nactiProtejsek().value()) << "the vault refused";

    EXPECT_EQ(companion->stav().vaultTrouble.value(),
              "Odpojení telefonu se nepodařilo uložit: Trezor odmítl.");

    end();
    store.failDelete.reset();
    auto socket = sockets.layOut();
    start();
    EXPECT_TRUE(companion->stav().protejsek.value());
    phone.attach(socket, *mac);
    phone.refuseLogin(RelayFailure::revoked, "Pryč.");
    executor.runUntilIdle();
    EXPECT_EQ(availability(), "Párování neplatí — Zařízení bylo odvoláno.");
    EXPECT_FALSE(companion->stav().protejsek.value());
    EXPECT_FALSE(store.held.nactiProtejsek().value());
}

TEST_F(CompanionTest, ARevocationAtTheLoginForgetsThePeerAndIsTheLastWord) {
    auto socket = startPaired();
    phone.refuseLogin(RelayFailure::revoked, "Pryč.");
    executor.runUntilIdle();
    EXPECT_EQ(availability(), "Párování neplatí — Zařízení bylo odvoláno.");
    EXPECT_FALSE(companion->stav().protejsek.value());
    EXPECT_FALSE(store.held.nactiProtejsek().value());
    clock.advance(60s);
    executor.runUntilIdle();
    EXPECT_EQ(sockets.urls.size(), 1U);
}

TEST_F(CompanionTest, AnotherFailureAtTheLoginKeepsThePeerAndIsTriedAgain) {
    auto socket = startPaired();
    phone.refuseLogin(RelayFailure::rateLimited, "Pomaleji.");
    executor.runUntilIdle();
    EXPECT_EQ(availability(), "Připojuji… (2. pokus)");
    EXPECT_EQ(trouble(), "Zařízení není spárované. Pomaleji.");
    EXPECT_TRUE(store.held.nactiProtejsek().value());
    clock.advance(1s);
    executor.runUntilIdle();
    EXPECT_EQ(sockets.urls.size(), 2U);
}

TEST_F(CompanionTest, APairThatTheRelayDoesNotKnowAtTheLoginKeepsThePeerAndIsNotTriedAgain) {
    auto socket = startPaired();
    phone.refuseLogin(RelayFailure::unknownPair, "Neznám.");
    executor.runUntilIdle();
    EXPECT_EQ(availability(), "Spojení přerušeno — Zařízení není spárované. Neznám.");
    EXPECT_TRUE(store.held.nactiProtejsek().value());
    clock.advance(60s);
    executor.runUntilIdle();
    EXPECT_EQ(sockets.urls.size(), 1U);
}

TEST_F(CompanionTest, TheOldLinkIsGoneAlsoWhenTheNewOneCannotBeBuilt) {
    auto socket = startSecured();
    companion->stav().protejsek = phone.asPeer("nesmysl");
    companion->pripojit();
    executor.runUntilIdle();
    EXPECT_FALSE(socket->closed.empty());
    EXPECT_EQ(availability(),
              "Párování neplatí — Zařízení není spárované. Uložená adresa relaye nedává smysl.");
    EXPECT_EQ(trouble(), "Zařízení není spárované. Uložená adresa relaye nedává smysl.");
}

TEST_F(CompanionTest, SleepTakesTheLinkDownAndWakeBuildsItAnew) {
    auto socket = startSecured();
    sleep.fallAsleep();
    EXPECT_EQ(availability(), "Telefon spí (1 min)");
    EXPECT_EQ(sleep.allowed, 0) << "the link is still up";
    executor.runUntilIdle();
    ASSERT_FALSE(socket->closed.empty());
    EXPECT_EQ(socket->closed[0], CloseCode::goingAway);
    EXPECT_EQ(sleep.allowed, 1);
    EXPECT_EQ(clock.waiting(), 2U) << "only the waits of Bdelost";

    auto second = sockets.layOut();
    sleep.wake();
    executor.runUntilIdle();
    EXPECT_EQ(availability(), "Připojuji…");
    EXPECT_EQ(sockets.urls.size(), 2U);
}

TEST_F(CompanionTest, LateEventsOfAnOldLinkDoNotOverwriteTheSleep) {
    auto socket = startSecured();
    phone.deliver({RelayMessage::PeerOnline{false}});
    socket->breakWith("přerušeno");
    sleep.fallAsleep();
    executor.runUntilIdle();
    EXPECT_EQ(availability(), "Telefon spí (1 min)");
}

TEST_F(CompanionTest, AWakeWithoutAPeerChangesNothing) {
    start();
    sleep.fallAsleep();
    sleep.wake();
    executor.runUntilIdle();
    EXPECT_EQ(availability(), "Telefon spí (1 min)");
    EXPECT_TRUE(sockets.urls.empty());
}

TEST_F(CompanionTest, DisconnectingLeavesTheAvailabilityAsItIs) {
    startSecured();
    companion->odpojit();
    executor.runUntilIdle();
    EXPECT_EQ(availability(), "Připraven");
}

TEST_F(CompanionTest, ConnectingAgainReplacesTheLink) {
    auto first = startSecured();
    auto second = sockets.layOut();
    companion->pripojit();
    executor.runUntilIdle();
    ASSERT_FALSE(first->closed.empty());
    EXPECT_EQ(sockets.urls.size(), 2U);
    phone.attach(second, *mac);
    phone.logIn();
    executor.runUntilIdle();
    phone.exchangeHellos();
    executor.runUntilIdle();
    EXPECT_EQ(availability(), "Připraven");
}

TEST_F(CompanionTest, KeepsTheRelayAddressOnEveryChangingWrite) {
    start();
    EXPECT_EQ(companion->stav().relayAdresa.value(), "http://127.0.0.1:8787");
    int writes = defaults.writes;
    companion->setRelayAdresa("http://127.0.0.1:8787");
    EXPECT_EQ(defaults.writes, writes);
    companion->setRelayAdresa("https://relay.example");
    EXPECT_EQ(defaults.text("relay.adresa"), "https://relay.example");
    end();
    start();
    EXPECT_EQ(companion->stav().relayAdresa.value(), "https://relay.example");
}

} // namespace
} // namespace morvex
