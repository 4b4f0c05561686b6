#include "tests/support/PairingHarness.h"

#include <optional>

namespace morvex {
namespace {

using namespace std::chrono_literals;

/// What comes while the vault keeps a phone that was agreed to.
using PairingSaveTest = PairingHarness;

TEST_F(PairingSaveTest, ARefusalDuringTheSaveKeepsNothing) {
    start();
    beginPairing();
    sendHello(hello());
    flow().potvrditCislo(number());
    flow().odmitnoutCislo();
    executor.runUntilIdle();
    EXPECT_TRUE(failure().starts_with("Čísla se neshodovala.")) << failure();
    EXPECT_FALSE(store.held.nactiProtejsek().value());
    EXPECT_FALSE(companion->stav().protejsek.value());
}

/// A refusal during the save of a vault that removes nothing, from which the next try finds it mended.
class RefusalDuringTheSaveTest : public PairingSaveTest {
  protected:
    void refuseWithoutRemoval() {
        start();
        beginPairing();
        sendHello(hello());
        store.failDelete = TextError{"Na disku není místo."};
        flow().potvrditCislo(number());
        flow().odmitnoutCislo();
        executor.runUntilIdle();
    }

    void mendTheVault() {
        store.failDelete.reset();
        clock.advance(std::chrono::seconds(5));
        executor.runUntilIdle();
    }
};

TEST_F(RefusalDuringTheSaveTest, ThatCannotBeTakenBackIsToldAndTriedAgain) {
    refuseWithoutRemoval();
    EXPECT_TRUE(failure().starts_with("Čísla se neshodovala.")) << failure();
    EXPECT_EQ(companion->stav().vaultTrouble.value(),
              "Zrušené párování se nepodařilo smazat: Na disku není místo.");
    mendTheVault();
    EXPECT_FALSE(store.held.nactiProtejsek().value());
    EXPECT_FALSE(companion->stav().vaultTrouble.value());
}

TEST_F(RefusalDuringTheSaveTest, LeavesAPhoneThatWasPairedSince) {
    refuseWithoutRemoval();
    auto other = phone.asPeer();
    other.deviceID = DeviceIdentity::generate().deviceID();
    (void)store.held.ulozProtejsek(other);
    mendTheVault();
    EXPECT_EQ(store.held.nactiProtejsek().value(), other);
}

TEST_F(PairingSaveTest, ACancelDuringTheSaveKeepsTheOldPhone) {
    startSecured();
    auto old = companion->stav().protejsek.value();
    beginPairing();
    ScriptedPhone another(clock);
    sendHello(Parovani::makeHello(another.identity, phone.pair));
    flow().potvrditCislo(state().as<StavParovani::OverCislo>()->cislo);
    flow().zrusitParovani();
    executor.runUntilIdle();
    EXPECT_EQ(companion->stav().protejsek.value(), old);
    EXPECT_EQ(store.held.nactiProtejsek().value(), old);
}

/// The vault works when a test says so.
class SlowPairingSaveTest : public PairingSaveTest {
  protected:
    void startSlowly() {
        storage = &vaultThread;
        start();
        runAll();
    }

    void runAll() {
        while (vaultThread.runUntilIdle() + executor.runUntilIdle() > 0) continue;
    }

    ManualExecutor vaultThread;
};

/// A cancel during the save of a new phone, in a vault that does not put the old one back at first.
class CancelDuringTheSaveTest : public SlowPairingSaveTest {
  protected:
    void cancelWithoutPuttingBack() {
        storage = &vaultThread;
        startPaired();
        runAll();
        old = companion->stav().protejsek.value();
        beginPairing();
        sendHello(Parovani::makeHello(another.identity, phone.pair));
        flow().potvrditCislo(state().as<StavParovani::OverCislo>()->cislo);
        executor.runUntilIdle();
        vaultThread.runUntilIdle();
        store.failSave = TextError{"Na disku není místo."};
        flow().zrusitParovani();
        runAll();
        EXPECT_EQ(companion->stav().vaultTrouble.value(),
                  "Zrušené párování se nepodařilo smazat: Na disku není místo.");
        EXPECT_EQ(store.held.nactiProtejsek().value()->deviceID, another.identity.deviceID());
        store.failSave.reset();
    }

    void retry() {
        clock.advance(5s);
        runAll();
        EXPECT_FALSE(companion->stav().vaultTrouble.value());
    }

    ScriptedPhone another{clock};
    std::optional<PairedPeer> old;
};

TEST_F(CancelDuringTheSaveTest, ThatCannotPutTheOldPhoneBackIsToldAndTriedAgain) {
    cancelWithoutPuttingBack();
    retry();
    EXPECT_EQ(store.held.nactiProtejsek().value(), old);
}

TEST_F(CancelDuringTheSaveTest, PutsNoPhoneBackThatWasUnpairedSince) {
    cancelWithoutPuttingBack();
    flow().odvolat();
    runAll();
    retry();
    EXPECT_FALSE(store.held.nactiProtejsek().value());
}

TEST_F(PairingSaveTest, AnEndAfterARefusalDuringTheSaveKeepsNothing) {
    start();
    beginPairing();
    sendHello(hello());
    flow().potvrditCislo(number());
    flow().odmitnoutCislo();
    end();
    EXPECT_FALSE(store.held.nactiProtejsek().value());
}

TEST_F(SlowPairingSaveTest, AnEndDuringTheSaveKeepsAConfirmedPhone) {
    startSlowly();
    beginPairing();
    sendHello(hello());
    agree();
    TaskScope ending(executor);
    ending.spawn(companion->shutDown());
    runAll();
    EXPECT_EQ(ending.live(), 0);
    EXPECT_TRUE(store.held.nactiProtejsek().value());
    features.reset();
    companion.reset();
}

TEST_F(SlowPairingSaveTest, AnEndDuringTheSaveOfARefusedPhoneKeepsNothing) {
    startSlowly();
    beginPairing();
    sendHello(hello());
    agree();
    flow().odmitnoutCislo();
    TaskScope ending(executor);
    ending.spawn(companion->shutDown());
    runAll();
    EXPECT_EQ(ending.live(), 0);
    EXPECT_FALSE(store.held.nactiProtejsek().value());
    features.reset();
    companion.reset();
}

TEST_F(SlowPairingSaveTest, AFailureDuringTheEndIsToldBehindIt) {
    startSlowly();
    beginPairing();
    sendHello(hello());
    agree();
    store.failSave = TextError{"Trezor odmítl."};
    TaskScope ending(executor);
    ending.spawn(companion->shutDown());
    runAll();
    EXPECT_EQ(ending.live(), 0);
    EXPECT_EQ(companion->stav().vaultTrouble.value(), "Párování se nepodařilo uložit: Trezor odmítl.");
    features.reset();
    companion.reset();
}

TEST_F(SlowPairingSaveTest, ASaveThatHangsHoldsUpNoLaterAgreement) {
    startSlowly();
    beginPairing();
    sendHello(hello());
    agree();
    flow().zrusitParovani();
    beginPairing("SECOND");
    sendHello(hello());
    agree();
    runAll();
    ASSERT_TRUE(store.held.nactiProtejsek().value());
    EXPECT_EQ(store.held.nactiProtejsek().value()->pairID, PairID{"SECOND"});
    EXPECT_EQ(companion->stav().protejsek.value(), store.held.nactiProtejsek().value());
    TaskScope ending(executor);
    ending.spawn(companion->shutDown());
    runAll();
    EXPECT_EQ(ending.live(), 0);
    features.reset();
    companion.reset();
}

} // namespace
} // namespace morvex
