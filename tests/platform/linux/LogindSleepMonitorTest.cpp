#include "platform/linux/LogindSleepMonitor.h"

#include "tests/platform/linux/MockedLogind.h"

namespace morvex {
namespace {

const std::vector<std::string> none;
const std::vector<std::string> delay{"sleep by Morvex, delay: Morvex se před spánkem odpojí."};
const QString prepareForSleep = QStringLiteral("PrepareForSleep");

class LogindSleepMonitorTest : public MockedLogind {
  protected:
    void watch(LogindSleepMonitor& monitor) {
        watching = {monitor.onSleep([this] { told.emplace_back("sleep"); }),
                    monitor.onWake([this] { told.emplace_back("wake"); })};
    }

    bool eventuallyTold(const std::vector<std::string>& expected) {
        return eventually([&] { return told == expected; });
    }

    std::vector<std::string> told;
    std::vector<Connection> watching;
};

TEST_F(LogindSleepMonitorTest, DelaysTheSleepUntilItIsLetGoAndEachSleepAnew) {
    startService();
    LogindSleepMonitor monitor(systemBus());
    watch(monitor);
    ASSERT_TRUE(eventuallyHolds(delay));

    std::vector<std::string> expected;
    for (int night = 0; night < 2; ++night) {
        sendPrepare(prepareForSleep, true);
        expected.emplace_back("sleep");
        ASSERT_TRUE(eventuallyTold(expected));
        EXPECT_EQ(locks(), delay);
        monitor.letSleep();
        EXPECT_TRUE(eventuallyHolds(none));

        sendPrepare(prepareForSleep, false);
        expected.emplace_back("wake");
        ASSERT_TRUE(eventuallyTold(expected));
        EXPECT_TRUE(eventuallyHolds(delay));
    }
}

TEST_F(LogindSleepMonitorTest, AWakeFromASleepThatWasNotLetGoLeavesOneDelay) {
    startService();
    LogindSleepMonitor monitor(systemBus());
    watch(monitor);
    sendPrepare(prepareForSleep, true);
    sendPrepare(prepareForSleep, false);
    ASSERT_TRUE(eventuallyTold({"sleep", "wake"}));
    EXPECT_TRUE(eventuallyHolds(delay));
}

TEST_F(LogindSleepMonitorTest, AShutdownIsNoSleep) {
    startService();
    LogindSleepMonitor monitor(systemBus());
    watch(monitor);
    sendPrepare(QStringLiteral("PrepareForShutdown"), true);
    sendPrepare(prepareForSleep, true);
    EXPECT_TRUE(eventuallyTold({"sleep"}));
}

TEST_F(LogindSleepMonitorTest, ASignalOfAnotherShapeIsIgnored) {
    startService();
    LogindSleepMonitor monitor(systemBus());
    watch(monitor);
    const QString manager = QStringLiteral("org.freedesktop.login1.Manager");
    emitSignal(manager, prepareForSleep, QString(), {});
    emitSignal(manager, prepareForSleep, QStringLiteral("s"), {QStringLiteral("true")});
    sendPrepare(prepareForSleep, false);
    EXPECT_TRUE(eventuallyTold({"wake"}));
}

TEST_F(LogindSleepMonitorTest, AfterTheWatchingNothingIsToldOrDelayed) {
    startService();
    LogindSleepMonitor monitor(systemBus());
    watch(monitor);
    ASSERT_TRUE(eventuallyHolds(delay));
    watching.clear();
    sendPrepare(prepareForSleep, true);
    ASSERT_TRUE(eventuallyHolds(none));

    LogindSleepMonitor second(systemBus());
    watch(second);
    sendPrepare(prepareForSleep, false);
    EXPECT_TRUE(eventuallyTold({"wake"})) << "the sleep was not told";
    EXPECT_TRUE(eventuallyHolds(delay)) << "that of the second monitor";
}

TEST_F(LogindSleepMonitorTest, AServiceThatStartsLaterIsHeard) {
    LogindSleepMonitor monitor(systemBus());
    watch(monitor);
    startService();
    sendPrepare(prepareForSleep, true);
    EXPECT_TRUE(eventuallyTold({"sleep"}));
    monitor.letSleep();
}

TEST_F(LogindSleepMonitorTest, WithoutABusItTellsNothing) {
    LogindSleepMonitor monitor(noBus());
    watch(monitor);
    monitor.letSleep();
    EXPECT_TRUE(told.empty());
}

} // namespace
} // namespace morvex
