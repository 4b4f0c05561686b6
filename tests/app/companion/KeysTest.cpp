#include "foundation/TaskScope.h"
#include "shared-apple/KeychainChyba.h"
#include "tests/support/PairingHarness.h"

namespace morvex {
namespace {

using namespace std::chrono_literals;

/// The keys of this computer, when the vault does not give them at once.
class KeysTest : public PairingHarness {
  protected:
    static KeychainChyba locked(std::int32_t status = vaultStatus::userCanceled) {
        return {status, KeychainChyba::Pokus::reading, "identita.podpisovy",
                Sentence("uživatel odemčení zrušil")};
    }

    void keepAPairedIdentity() {
        mac = std::make_shared<const DeviceIdentity>(DeviceIdentity::generate());
        (void)store.held.ulozIdentitu(mac);
        (void)store.held.ulozProtejsek(phone.asPeer());
    }

    void tryAgain() {
        companion->tryAgain();
        executor.runUntilIdle();
    }

    /// The vault works when `slow` does.
    void startWithSlowVault() {
        storage = &slow;
        start();
    }

    void runAll() {
        while (slow.runUntilIdle() + executor.runUntilIdle() > 0) continue;
    }

    KeysState::Case keys() { return companion->stav().keys.value().kind; }

    ManualExecutor slow;
};

TEST_F(KeysTest, AKeyringThatStaysLockedIsToldWithoutJargonAndAskedAgain) {
    const std::string told =
        "Klíčenka zůstala zamčená. Jsou v ní klíče tohoto počítače, bez nich se telefon nepřipojí.";
    keepAPairedIdentity();
    for (auto status : {vaultStatus::userCanceled, vaultStatus::interactionNotAllowed}) {
        store.failLoad = locked(status);
        sockets.urls.clear();
        start();
        for (int question = 0; question < 2; ++question) {
            EXPECT_EQ(availability(), "Spojení přerušeno — Klíčenka zůstala zamčená.");
            EXPECT_EQ(trouble(), told);
            EXPECT_EQ(companion->stav().keys.value(), (KeysState{KeysState::Case::missing, Sentence(told)}));
            EXPECT_TRUE(sockets.urls.empty());
            tryAgain();
        }
        store.failLoad.reset();
        tryAgain();
        EXPECT_EQ(keys(), KeysState::Case::present);
        EXPECT_NE(trouble(), told);
        EXPECT_EQ(availability(), "Připojuji… (2. pokus)");
        EXPECT_EQ(sockets.urls.size(), 1U);
        EXPECT_NE(features->agents.stav().claude.value().problem, "Zjišťuji…");
        end();
    }
}

TEST_F(KeysTest, KeysThatCouldNotBeKeptAreMadeOnceTheCauseIsGone) {
    store.failSave = TextError{"Na disku není místo."};
    start();
    EXPECT_EQ(companion->stav().keys.value(),
              (KeysState{KeysState::Case::missing, Sentence("Na disku není místo.")}));
    store.failSave.reset();
    tryAgain();
    EXPECT_EQ(keys(), KeysState::Case::present);
    EXPECT_EQ(availability(), "Nespárováno");
    EXPECT_EQ(trouble(), "none");
    EXPECT_TRUE(store.held.nactiIdentitu().value());
    const auto loads = store.loads;
    tryAgain();
    EXPECT_EQ(store.loads, loads) << "what is there is not loaded again";
}

TEST_F(KeysTest, WhileTheyAreAwaitedNobodyKnowsOfAPhone) {
    keepAPairedIdentity();
    startWithSlowVault();
    EXPECT_EQ(keys(), KeysState::Case::loading);
    EXPECT_EQ(companion->stav().linkText(clock.now()), "Čekám na klíče tohoto počítače…");
    runAll();
    EXPECT_EQ(keys(), KeysState::Case::present);
    EXPECT_NE(companion->stav().linkText(clock.now()), "Čekám na klíče tohoto počítače…");
}

TEST_F(KeysTest, AQuestionThatIsOpenIsTakenBackAndAskedOnceMore) {
    store.failLoad = locked();
    startWithSlowVault();
    for (int presses = 1; presses <= 3; ++presses) {
        companion->tryAgain();
        executor.runUntilIdle();
        EXPECT_EQ(vault.stops, presses);
    }
    runAll();
    EXPECT_EQ(store.loads, 2) << "however often that was asked for";
}

TEST_F(KeysTest, AVaultThatIsLockedWhenThePhoneIsReadIsToldAndAskedAgain) {
    keepAPairedIdentity();
    store.failPeerLoad = locked();
    start();
    EXPECT_EQ(availability(), "Spojení přerušeno — Klíčenka zůstala zamčená.");
    EXPECT_EQ(companion->stav().keys.value().kind, KeysState::Case::missing);
    store.failPeerLoad.reset();
    (void)sockets.layOut();
    companion->tryAgain();
    executor.runUntilIdle();
    EXPECT_EQ(companion->stav().keys.value().kind, KeysState::Case::present);
    EXPECT_TRUE(companion->stav().protejsek.value());
    EXPECT_EQ(sockets.urls.size(), 1U);
}

TEST_F(KeysTest, AnEndAsksNobodyAnyMoreAndTellsNothingOfIt) {
    store.failLoad = locked();
    startWithSlowVault();
    TaskScope ending(executor);
    ending.spawn(companion->shutDown());
    executor.runUntilIdle();
    EXPECT_TRUE(vault.isEnded);
    companion->tryAgain();
    runAll();
    EXPECT_EQ(store.loads, 1);
    EXPECT_EQ(ending.live(), 0);
    EXPECT_EQ(trouble(), "none");
    companion.reset();
}

TEST_F(KeysTest, NoPairingBeginsOverAPhoneThatWasNotRead) {
    store.failPeerLoad = locked();
    startPaired();
    executor.runUntilIdle();
    const auto kept = store.held.nactiProtejsek().value();
    ASSERT_TRUE(kept);
    flow().zacitParovani();
    executor.runUntilIdle();
    EXPECT_TRUE(http.requests.empty()) << "nothing is created at the relay";
    store.failPeerLoad.reset();
    flow().zacitParovani();
    executor.runUntilIdle();
    EXPECT_TRUE(http.requests.empty()) << "there is a phone";
    EXPECT_EQ(companion->stav().protejsek.value(), kept);
}

/// What the vault has yet to forget.
class ForgettingTest : public KeysTest {
  protected:
    void unpair() {
        flow().odvolat();
        executor.runUntilIdle();
    }

    void pass(Clock::Duration time) {
        clock.advance(time);
        executor.runUntilIdle();
    }

    bool isForgotten() { return !store.held.nactiProtejsek().value(); }

    std::string unsaved() {
        return companion->stav().vaultTrouble.value().value_or(Sentence("none")).czech();
    }

    void startConnected() {
        startPaired();
        executor.runUntilIdle();
    }

    const std::string noRoom = "Odpojení telefonu se nepodařilo uložit: Na disku není místo.";
};

TEST_F(ForgettingTest, NothingIsRemovedFromAVaultThatCannotBeRead) {
    startConnected();
    store.failPeerLoad = Error(KeychainChyba{vaultStatus::io, KeychainChyba::Pokus::reading, "", {}});
    unpair();
    EXPECT_TRUE(unsaved().starts_with("Odpojení telefonu se nepodařilo uložit: ")) << unsaved();
    EXPECT_FALSE(isForgotten());
    store.failPeerLoad.reset();
    pass(5s);
    EXPECT_TRUE(isForgotten());
}

TEST_F(ForgettingTest, AnUnpairingThatCannotBeSavedIsToldAndTriedEvery5Seconds) {
    startConnected();
    store.failDelete = TextError{"Na disku není místo."};
    unpair();
    EXPECT_EQ(unsaved(), noRoom);
    ASSERT_FALSE(isForgotten());
    pass(5s);
    EXPECT_EQ(unsaved(), noRoom);
    store.failDelete.reset();
    pass(4s);
    EXPECT_FALSE(isForgotten());
    pass(1s);
    EXPECT_TRUE(isForgotten());
    EXPECT_EQ(unsaved(), "none");
}

TEST_F(ForgettingTest, ALockedVaultIsAskedAgainEveryHour) {
    for (auto status : {vaultStatus::userCanceled, vaultStatus::interactionNotAllowed}) {
        startConnected();
        store.failDelete = locked(status);
        unpair();
        EXPECT_TRUE(unsaved().starts_with("Odpojení telefonu se nepodařilo uložit: ")) << unsaved();
        store.failDelete.reset();
        pass(59min);
        EXPECT_FALSE(isForgotten()) << "it would ask a person each time";
        pass(1min);
        EXPECT_TRUE(isForgotten());
        EXPECT_EQ(unsaved(), "none");
        end();
    }
}

TEST_F(ForgettingTest, IsTriedAgainAtOnceWhenALockedVaultHasKeptSomethingElse) {
    startConnected();
    store.failDelete = locked();
    unpair();
    ASSERT_NE(unsaved(), "none");
    beginPairing("SECOND");
    sendHello(hello());
    agree();
    EXPECT_EQ(unsaved(), "none") << "the second phone took the place of the first";
}

TEST_F(ForgettingTest, ADamagedRecordGoesToo) {
    startConnected();
    store.failPeerLoad = TextError{"Záznam je poškozený."};
    unpair();
    EXPECT_TRUE(isForgotten());
    EXPECT_EQ(unsaved(), "none");
}

TEST_F(ForgettingTest, IsDoneThoughTheProgramEndsAtOnce) {
    startConnected();
    flow().odvolat();
    end();
    EXPECT_TRUE(isForgotten());
}

TEST_F(ForgettingTest, IsToldWhileAnyOfSeveralWaits) {
    startConnected();
    store.failDelete = TextError{"Na disku není místo."};
    unpair();
    pass(3s);
    beginPairing("SECOND");
    sendHello(hello());
    agree();
    ASSERT_TRUE(companion->stav().protejsek.value());
    unpair();
    pass(2s);
    EXPECT_EQ(unsaved(), noRoom) << "the first is done, since another phone took its place";
    store.failDelete.reset();
    pass(3s);
    EXPECT_TRUE(isForgotten());
    EXPECT_EQ(unsaved(), "none");
}

TEST_F(ForgettingTest, IsToldUntilItIsDoneWhateverElseIsTold) {
    startConnected();
    store.failDelete = TextError{"Na disku není místo."};
    unpair();
    companion->stav().potiz = Sentence("jiná potíž");
    flow().zacitParovani();
    executor.runUntilIdle();
    EXPECT_EQ(unsaved(), noRoom);
}

TEST_F(ForgettingTest, IsTriedOnceMoreAtTheEndAndToldBehindIt) {
    for (auto failure : {Error(TextError{"Na disku není místo."}), Error(locked())})
        for (bool isMended : {true, false}) {
            startConnected();
            store.failDelete = failure;
            unpair();
            if (isMended) store.failDelete.reset();
            TaskScope ending(executor);
            ending.spawn(companion->shutDown());
            executor.runUntilIdle();
            EXPECT_EQ(ending.live(), 0);
            EXPECT_EQ(isForgotten(), isMended);
            EXPECT_EQ(unsaved() == "none", isMended);
            store.failDelete.reset();
            features.reset();
            companion.reset();
        }
}

TEST_F(ForgettingTest, AnUnpairingLeavesAPhoneThatWasPairedSince) {
    startConnected();
    store.failDelete = TextError{"Na disku není místo."};
    unpair();
    auto other = phone.asPeer();
    other.pairID = {"SINCE"};
    (void)store.held.ulozProtejsek(other);
    store.failDelete.reset();
    pass(5s);
    EXPECT_EQ(store.held.nactiProtejsek().value(), other);
    EXPECT_EQ(unsaved(), "none");
}

TEST_F(KeysTest, AnEndWhileThePhoneIsReadTellsNothingOfIt) {
    keepAPairedIdentity();
    store.failPeerLoad = Error(KeychainChyba{vaultStatus::io, KeychainChyba::Pokus::reading, "", {}});
    TaskScope ending(executor);
    store.onPeerLoad = [&] { ending.spawn(companion->shutDown()); };
    startWithSlowVault();
    runAll();
    EXPECT_EQ(ending.live(), 0);
    EXPECT_EQ(availability(), "Nespárováno");
    EXPECT_EQ(trouble(), "none");
    features.reset();
    companion.reset();
}

TEST_F(KeysTest, APairingLoadsThemFirstAndSaysWhyItCannot) {
    store.failSave = TextError{"Na disku není místo."};
    start();
    for (int presses = 0; presses < 2; ++presses) {
        flow().zacitParovani();
        EXPECT_EQ(failure(), "none") << "of the try before";
        executor.runUntilIdle();
        EXPECT_EQ(failure(), "Na disku není místo.");
        EXPECT_TRUE(http.requests.empty());
    }
    store.failSave.reset();
    layOutPair();
    flow().zacitParovani();
    executor.runUntilIdle();
    EXPECT_TRUE(state().as<StavParovani::CekamNaTelefon>());
}

TEST_F(KeysTest, APairingThatWaitsForThemBeginsOnceAndCanBeCancelled) {
    ManualExecutor slow;
    storage = &slow;
    start();
    layOutPair();
    for (int presses = 0; presses < 3; ++presses) flow().zacitParovani();
    executor.runUntilIdle();
    EXPECT_TRUE(flow().awaitsKeys());
    EXPECT_EQ(state(), StavParovani{}) << "the relay is not asked yet";
    while (slow.runUntilIdle() + executor.runUntilIdle() > 0) continue;
    EXPECT_EQ(http.requests.size(), 1U);
    EXPECT_FALSE(flow().awaitsKeys());
    end();

    start();
    flow().zacitParovani();
    flow().zrusitParovani();
    EXPECT_FALSE(flow().awaitsKeys());
    while (slow.runUntilIdle() + executor.runUntilIdle() > 0) continue;
    EXPECT_EQ(http.requests.size(), 1U);
    EXPECT_EQ(state(), StavParovani{});
    end();
}

TEST_F(KeysTest, APairingThatFindsAPhoneConnectsToItInstead) {
    keepAPairedIdentity();
    store.failLoad = locked();
    start();
    flow().zacitParovani();
    executor.runUntilIdle();
    EXPECT_EQ(failure(),
              "Klíčenka zůstala zamčená. Jsou v ní klíče tohoto počítače, bez nich se telefon nepřipojí.");
    flow().zrusitParovani();
    store.failLoad.reset();
    flow().zacitParovani();
    executor.runUntilIdle();
    EXPECT_EQ(state(), StavParovani{});
    EXPECT_TRUE(http.requests.empty());
    EXPECT_EQ(sockets.urls.size(), 1U);
}

TEST_F(KeysTest, ThatTheyLieInFilesIsTold) {
    for (auto place : {SecretVault::Place::privateFiles, SecretVault::Place::keyring}) {
        vault.where = place;
        start();
        EXPECT_EQ(companion->stav().areKeysInFiles.value(), place == SecretVault::Place::privateFiles);
        end();
    }
}

} // namespace
} // namespace morvex
