#include "app/companion/Bdelost.h"

#include "platform/memory/FakeLoginItem.h"
#include "platform/memory/FakePower.h"
#include "platform/memory/FakeSleepInhibitor.h"
#include "platform/memory/FakeSleepMonitor.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/MemoryDefaults.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;

class BdelostTest : public testing::Test {
  protected:
    ~BdelostTest() override { end(); }

    void start() {
        bdelost = std::make_unique<Bdelost>(
            Bdelost::Services{power, sleep, inhibitor, loginItem, defaults, clock, scope});
        executor.runUntilIdle();
    }

    void startAwake() {
        defaults.set("bdelost.drzet", true);
        start();
    }

    void end() {
        scope.stop();
        executor.runUntilIdle();
        bdelost.reset();
    }

    void pass(Clock::Duration time) {
        clock.advance(time);
        executor.runUntilIdle();
    }

    std::string text() const { return bdelost->stavText().czech(); }

    std::string trouble() const { return bdelost->stav().potiz.value().value_or(Sentence("none")).czech(); }

    std::string holdTrouble() const {
        return bdelost->stav().keepAwakeTrouble.value().value_or(Sentence("none")).czech();
    }

    ManualExecutor executor;
    ManualClock clock;
    TaskScope scope{executor};
    FakePower power;
    FakeSleepMonitor sleep;
    FakeSleepInhibitor inhibitor;
    FakeLoginItem loginItem;
    MemoryDefaults defaults;
    std::unique_ptr<Bdelost> bdelost;
};

TEST_F(BdelostTest, StartsWithTheWishOfTheSettingsAndTheStateOfTheSystem) {
    loginItem.enabled = true;
    startAwake();
    EXPECT_TRUE(bdelost->stav().drzetVzhuru);
    EXPECT_TRUE(bdelost->stav().spoustetPoPrihlaseni);
    EXPECT_TRUE(bdelost->stav().naNapajeni);
    EXPECT_FALSE(bdelost->stav().spi);
    EXPECT_EQ(trouble(), "none");
    EXPECT_TRUE(sleep.isWatched());
}

TEST_F(BdelostTest, WithoutASettingNothingIsWished) {
    power.mains = false;
    start();
    EXPECT_FALSE(bdelost->stav().drzetVzhuru);
    EXPECT_FALSE(bdelost->stav().spoustetPoPrihlaseni);
    EXPECT_FALSE(bdelost->stav().naNapajeni);
    EXPECT_TRUE(inhibitor.reasons.empty());
}

TEST_F(BdelostTest, HoldsIdleSleepOffOnMainsWhenThatIsWished) {
    startAwake();
    EXPECT_EQ(inhibitor.live, 1);
    EXPECT_EQ(inhibitor.reasons, std::vector<std::string>{"Morvex for Mac má zůstat dostupný pro telefon."});
}

TEST_F(BdelostTest, BatteryAlwaysLetsTheComputerSleep) {
    power.mains = false;
    startAwake();
    bdelost->setDrzetVzhuru(true);
    EXPECT_TRUE(inhibitor.reasons.empty());
}

TEST_F(BdelostTest, PullingThePlugIsNoticedWithin60SecondsAndEndsTheActivity) {
    startAwake();
    pass(30s);
    power.mains = false;
    pass(29s);
    EXPECT_EQ(inhibitor.live, 1);
    pass(1s);
    EXPECT_FALSE(bdelost->stav().naNapajeni);
    EXPECT_EQ(inhibitor.live, 0);
}

TEST_F(BdelostTest, ThePowerSourceIsReadAgainEveryMinute) {
    startAwake();
    for (bool mains : {false, true, false, true}) {
        power.mains = mains;
        pass(60s);
        EXPECT_EQ(bdelost->stav().naNapajeni.value(), mains);
        EXPECT_EQ(inhibitor.live, mains ? 1 : 0);
    }
}

TEST_F(BdelostTest, UnchangedPowerLeavesTheActivityAndItsWatchersAlone) {
    startAwake();
    int changes = 0;
    auto watching = bdelost->stav().naNapajeni.addNotifier([&changes] { ++changes; });
    pass(60s);
    pass(60s);
    EXPECT_EQ(inhibitor.reasons.size(), 1U);
    EXPECT_EQ(changes, 0);
}

TEST_F(BdelostTest, TurningTheWishOffEndsTheActivityAtOnce) {
    startAwake();
    bdelost->setDrzetVzhuru(false);
    EXPECT_EQ(inhibitor.live, 0);
    EXPECT_EQ(defaults.boolean("bdelost.drzet"), false);
}

TEST_F(BdelostTest, TurningTheWishOnBeginsOneActivityHoweverOften) {
    start();
    bdelost->setDrzetVzhuru(true);
    EXPECT_EQ(defaults.boolean("bdelost.drzet"), true);
    bdelost->setDrzetVzhuru(true);
    EXPECT_EQ(inhibitor.live, 1);
}

TEST_F(BdelostTest, ASystemThatRefusesToStayAwakeIsToldUntilTheNextAttempt) {
    startAwake();
    inhibitor.refuse(TextError{"Nejde to."});
    EXPECT_EQ(holdTrouble(), "Počítač se nepodařilo udržet vzhůru: Nejde to.");
    EXPECT_EQ(trouble(), "none");
    bdelost->setDrzetVzhuru(false);
    EXPECT_EQ(holdTrouble(), "none");
}

TEST_F(BdelostTest, SwitchesTheLoginItem) {
    start();
    bdelost->setSpoustetPoPrihlaseni(true);
    EXPECT_TRUE(loginItem.enabled);
    EXPECT_TRUE(bdelost->stav().spoustetPoPrihlaseni);
    bdelost->setSpoustetPoPrihlaseni(false);
    EXPECT_FALSE(loginItem.enabled);
    EXPECT_FALSE(bdelost->stav().spoustetPoPrihlaseni);
    EXPECT_EQ(trouble(), "none");
}

TEST_F(BdelostTest, AFailedRegistrationLeavesTheSwitchOffAndIsTold) {
    start();
    loginItem.failure = TextError{"Disk je plný."};
    bdelost->setSpoustetPoPrihlaseni(true);
    EXPECT_FALSE(bdelost->stav().spoustetPoPrihlaseni);
    EXPECT_EQ(trouble(), "Spouštění po přihlášení se nepodařilo nastavit: Disk je plný.");

    loginItem.failure.reset();
    bdelost->setSpoustetPoPrihlaseni(true);
    EXPECT_TRUE(bdelost->stav().spoustetPoPrihlaseni);
    EXPECT_EQ(trouble(), "none");
}

TEST_F(BdelostTest, AFailedWithdrawalLeavesTheSwitchOn) {
    loginItem.enabled = true;
    start();
    loginItem.failure = TextError{"Nesmíš."};
    bdelost->setSpoustetPoPrihlaseni(false);
    EXPECT_TRUE(bdelost->stav().spoustetPoPrihlaseni);
    EXPECT_EQ(trouble(), "Spouštění po přihlášení se nepodařilo nastavit: Nesmíš.");
}

TEST_F(BdelostTest, AfterAnyAttemptTheSwitchShowsWhatHolds) {
    start();
    loginItem.failure = TextError{"Nesmíš."};
    loginItem.enabled = true;
    bdelost->setSpoustetPoPrihlaseni(false);
    EXPECT_TRUE(bdelost->stav().spoustetPoPrihlaseni) << "somebody else had switched it on";
}

TEST_F(BdelostTest, TellsOfSleepAndWake) {
    start();
    std::vector<std::string> told;
    const auto sleeps = bdelost->naUsnuti([&] { told.push_back(text()); });
    const auto wakes = bdelost->naProbuzeni([&] { told.push_back(text()); });
    sleep.fallAsleep();
    EXPECT_TRUE(bdelost->stav().spi);
    sleep.wake();
    EXPECT_FALSE(bdelost->stav().spi);
    EXPECT_EQ(told,
              (std::vector<std::string>{"Mac spí", "Po chvíli nečinnosti usne a přestane být dostupný"}));
}

TEST_F(BdelostTest, TheWakeReadsThePowerSourceBeforeItIsTold) {
    startAwake();
    std::vector<bool> mainsAtWake;
    const auto wakes = bdelost->naProbuzeni([&] { mainsAtWake.push_back(bdelost->stav().naNapajeni); });
    sleep.fallAsleep();
    power.mains = false;
    sleep.wake();
    EXPECT_EQ(mainsAtWake, std::vector<bool>{false});
    EXPECT_EQ(inhibitor.live, 0);
}

TEST_F(BdelostTest, TheSleepWaitsUntilWhoeverWasToldIsReady) {
    start();
    const auto readying = bdelost->naUsnuti([] {});
    sleep.fallAsleep();
    pass(2999ms);
    EXPECT_EQ(sleep.allowed, 0);
    bdelost->allowSleep();
    EXPECT_EQ(sleep.allowed, 1);
}

TEST_F(BdelostTest, TheSleepWaitsThreeSecondsAtMost) {
    start();
    const auto readying = bdelost->naUsnuti([] {});
    sleep.fallAsleep();
    executor.runUntilIdle();
    pass(3s);
    EXPECT_EQ(sleep.allowed, 1);
}

TEST_F(BdelostTest, ASleepThatNobodyWantsToKnowOfIsNotDelayed) {
    start();
    sleep.fallAsleep();
    EXPECT_EQ(sleep.allowed, 1);
    sleep.wake();
}

TEST_F(BdelostTest, TheLimitOfOneSleepDoesNotCutTheNextOneShort) {
    start();
    const auto readying = bdelost->naUsnuti([] {});
    sleep.fallAsleep();
    executor.runUntilIdle();
    pass(1s);
    sleep.wake();
    pass(1s);
    sleep.fallAsleep();
    executor.runUntilIdle();
    pass(1s);
    EXPECT_EQ(sleep.allowed, 0);
    pass(2s);
    EXPECT_EQ(sleep.allowed, 1);
}

TEST_F(BdelostTest, WhoIsReadyOnlyAfterTheWakeDoesNotLetTheNextSleepGo) {
    start();
    const auto readying = bdelost->naUsnuti([] {});
    sleep.fallAsleep();
    sleep.wake();
    bdelost->allowSleep();
    EXPECT_EQ(sleep.allowed, 0);
}

TEST_F(BdelostTest, SaysHowReachableTheComputerStays) {
    const struct {
        bool asleep, wished, mains;
        const char* text;
    } cases[] = {
        {true, true, true, "Mac spí"},
        {true, false, false, "Mac spí"},
        {false, true, true, "Zůstane vzhůru, dokud je v zásuvce"},
        {false, true, false, "Na baterii usne — držení vzhůru platí jen při napájení"},
        {false, false, true, "Po chvíli nečinnosti usne a přestane být dostupný"},
        {false, false, false, "Po chvíli nečinnosti usne a přestane být dostupný"},
    };

    start();
    for (const auto& row : cases) {
        power.mains = row.mains;
        pass(60s);
        bdelost->setDrzetVzhuru(row.wished);
        if (row.asleep) sleep.fallAsleep();
        EXPECT_EQ(text(), row.text);
        if (row.asleep) sleep.wake();
    }
}

TEST_F(BdelostTest, ItsEndEndsTheActivityTheTimerAndTheWatching) {
    startAwake();
    EXPECT_EQ(clock.waiting(), 1U);
    end();
    EXPECT_EQ(inhibitor.live, 0);
    EXPECT_EQ(clock.waiting(), 0U);
    EXPECT_FALSE(sleep.isWatched());
}

} // namespace
} // namespace morvex
