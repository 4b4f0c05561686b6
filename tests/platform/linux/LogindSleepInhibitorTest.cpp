#include "platform/linux/LogindSleepInhibitor.h"

#include "tests/platform/linux/MockedLogind.h"

namespace morvex {
namespace {

const std::vector<std::string> none;
const std::vector<std::string> one{"idle by Morvex, block: Má zůstat vzhůru."};

class LogindSleepInhibitorTest : public MockedLogind {
  protected:
    auto hold(LogindSleepInhibitor& inhibitor) {
        return inhibitor.holdOffIdleSleep(
            "Má zůstat vzhůru.", [this](const Error& error) { failures.push_back(error.popis().czech()); });
    }

    std::vector<std::string> failures;
};

TEST_F(LogindSleepInhibitorTest, HoldsOffIdleSleepAloneAsLongAsTheTokenLives) {
    startService();
    LogindSleepInhibitor inhibitor(systemBus());
    auto token = hold(inhibitor);
    EXPECT_TRUE(eventuallyHolds(one));
    token.reset();
    EXPECT_TRUE(eventuallyHolds(none));
    EXPECT_TRUE(failures.empty());
}

TEST_F(LogindSleepInhibitorTest, ATokenThatEndsBeforeTheAnswerHoldsNothing) {
    startService();
    LogindSleepInhibitor inhibitor(systemBus());
    hold(inhibitor).reset();
    auto later = hold(inhibitor);
    EXPECT_TRUE(eventuallyHolds(one)) << "only the second one";
}

TEST_F(LogindSleepInhibitorTest, ASystemWithoutTheServiceRefuses) {
    LogindSleepInhibitor inhibitor(systemBus());
    auto token = hold(inhibitor);
    EXPECT_TRUE(failures.empty()) << "never within the request";
    ASSERT_TRUE(eventually([this] { return !failures.empty(); }));
    EXPECT_EQ(failures[0],
              "Přihlašovací služba systému to nezařídila: Na tomto počítači taková služba neběží.");
}

TEST_F(LogindSleepInhibitorTest, ASystemWithoutABusRefuses) {
    LogindSleepInhibitor inhibitor(noBus());
    auto token = hold(inhibitor);
    ASSERT_TRUE(eventually([this] { return failures.size() == 1; }));
    EXPECT_EQ(failures[0],
              "Přihlašovací služba systému to nezařídila: Na tomto počítači taková služba neběží.");
}

TEST_F(LogindSleepInhibitorTest, ATokenThatIsGoneIsToldNoFailure) {
    LogindSleepInhibitor inhibitor(systemBus());
    hold(inhibitor).reset();
    auto second =
        inhibitor.holdOffIdleSleep("x", [this](const Error&) { failures.emplace_back("the second one"); });
    ASSERT_TRUE(eventually([this] { return !failures.empty(); }));
    EXPECT_EQ(failures, std::vector<std::string>{"the second one"});
}

} // namespace
} // namespace morvex
