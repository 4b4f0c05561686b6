#include "shared-apple/KeychainChyba.h"
#include "tests/support/UiHarness.h"

namespace morvex {
namespace {

using namespace std::chrono_literals;

/// The windows while a keyring lets the keys of this computer wait.
class AwaitedKeysTest : public UiHarness {
  protected:
    /// As the program starts: the window first.
    void startUiThenCompanion() {
        storage = &slow;
        make();
        startUi();
        executor.start(companion->spustit());
        settle();
    }

    void letVaultWork() {
        while (slow.runUntilIdle() + executor.runUntilIdle() > 0) continue;
        settle();
    }

    void keepAPairedIdentity() {
        mac = std::make_shared<const DeviceIdentity>(DeviceIdentity::generate());
        (void)store.held.ulozIdentitu(mac);
        (void)store.held.ulozProtejsek(phone.asPeer());
    }

    void pass(Clock::Duration time) {
        clock.advance(time);
        settle();
    }

    ManualExecutor slow;
};

TEST_F(AwaitedKeysTest, TheWindowStandsAfterAMomentAndSaysWhatItWaitsFor) {
    keepAPairedIdentity();
    startUiThenCompanion();
    EXPECT_EQ(window(), nullptr);
    pass(499ms);
    EXPECT_EQ(window(), nullptr);
    pass(1ms);
    ASSERT_NE(window(), nullptr);
    EXPECT_TRUE(reads("Čekám na klíče tohoto počítače. Pokud se klíčenka ptá na heslo, odemkni ji."));
    EXPECT_TRUE(reads("Telefon: Čekám na klíče tohoto počítače…"));
    EXPECT_FALSE(mentions("Zatím žádný telefon."));
    press("Zkusit znovu");
    EXPECT_EQ(vault.stops, 1);
    letVaultWork();
    EXPECT_TRUE(mentions("Spárovaný telefon: "));
    EXPECT_FALSE(mentions("Čekám na klíče"));
}

TEST_F(AwaitedKeysTest, KeysThatComeAtOnceOpenTheWindowOnlyWithoutAPhone) {
    startUiThenCompanion();
    letVaultWork();
    ASSERT_NE(window(), nullptr);
    EXPECT_TRUE(mentions("Zatím žádný telefon."));
}

TEST_F(AwaitedKeysTest, WithAPhoneTheWindowStaysClosed) {
    keepAPairedIdentity();
    startUiThenCompanion();
    letVaultWork();
    pass(1s);
    EXPECT_EQ(window(), nullptr);
}

TEST_F(AwaitedKeysTest, AKeyringThatStaysLockedIsToldOnceWithWhatCanBeDone) {
    const std::string told =
        "Klíčenka zůstala zamčená. Jsou v ní klíče tohoto počítače, bez nich se telefon nepřipojí.";
    store.failLoad =
        KeychainChyba{vaultStatus::userCanceled, KeychainChyba::Pokus::reading, "identita.podpisovy", {}};
    startUiThenCompanion();
    letVaultWork();
    ASSERT_NE(window(), nullptr);
    const auto all = texts();
    const auto first = all.find(told);
    ASSERT_NE(first, std::string::npos) << all;
    EXPECT_TRUE(reads("Telefon: Spojení přerušeno — Klíčenka zůstala zamčená."));
    EXPECT_FALSE(mentions("Párování neplatí"));
    store.failLoad.reset();
    press("Zkusit znovu");
    letVaultWork();
    EXPECT_TRUE(mentions("Zatím žádný telefon."));
    EXPECT_FALSE(mentions("Klíčenka"));
}

TEST_F(AwaitedKeysTest, TheMainButtonActsOnceTheDiskHasRoom) {
    store.failSave = TextError{"Na disku není místo."};
    startUiThenCompanion();
    letVaultWork();
    EXPECT_TRUE(reads("Na disku není místo."));
    EXPECT_FALSE(mentions("Zobrazit QR kód"));
    press("Zkusit znovu");
    letVaultWork();
    EXPECT_TRUE(reads("Na disku není místo."));
    store.failSave.reset();
    press("Zkusit znovu");
    letVaultWork();
    press("Zobrazit QR kód");
    EXPECT_EQ(http.requests.size(), 1U);
}

} // namespace
} // namespace morvex
