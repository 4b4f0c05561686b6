#include "app/agents/AgentNews.h"

#include "platform/memory/ManualExecutor.h"
#include "tests/app/agents/HeldReports.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

using testing::ElementsAre;

class AgentNewsTest : public testing::Test {
  protected:
    void progress(int number) { news.prubeh(std::to_string(number), "r"); }

    ManualExecutor executor;
    HeldReports reports;
    TaskScope scope{executor};
    AgentNews news{reports, scope};
};

TEST_F(AgentNewsTest, SendsOneThingAfterTheOther) {
    progress(1);
    news.ukol({});
    progress(2);
    executor.runUntilIdle();
    EXPECT_THAT(reports.sent,
                ElementsAre("progress r: 1", "status", "task in_progress 1", "progress r: 2", "status"));
    progress(3);
    executor.runUntilIdle();
    EXPECT_EQ(reports.sent.size(), 7U);
}

TEST_F(AgentNewsTest, ALinkThatTakesNothingHoldsOneSendAndTheNewest) {
    reports.isHeld = true;
    for (int i = 0; i < 100'000; ++i) {
        progress(i);
        executor.runUntilIdle();
        ASSERT_EQ(scope.live(), 1);
    }
    EXPECT_THAT(reports.sent, ElementsAre("progress r: 0"));
    reports.release();
    executor.runUntilIdle();
    ASSERT_EQ(reports.sent.size(), 2 * (1 + AgentNews::mostWaiting));
    EXPECT_EQ(reports.sent[2], "progress r: " + std::to_string(100'000 - AgentNews::mostWaiting));
    EXPECT_EQ(reports.sent[reports.sent.size() - 2], "progress r: 99999");
    EXPECT_EQ(scope.live(), 0);
}

TEST_F(AgentNewsTest, WaitsUntilAllIsSent) {
    EXPECT_TRUE(executor.run(news.allSent())) << "nothing is on its way";
    reports.isHeld = true;
    progress(1);
    progress(2);
    auto isSent = std::make_shared<bool>(false);
    executor.start([](AgentNews* news, std::shared_ptr<bool> isSent) -> Task<void> {
        co_await news->allSent();
        *isSent = true;
    }(&news, isSent));
    executor.runUntilIdle();
    EXPECT_FALSE(*isSent);
    reports.release();
    executor.runUntilIdle();
    EXPECT_TRUE(*isSent);
    EXPECT_EQ(reports.sent.size(), 4U);
}

TEST_F(AgentNewsTest, NothingIsBegunAfterTheStop) {
    scope.stop();
    progress(1);
    EXPECT_TRUE(executor.run(news.allSent()));
    EXPECT_TRUE(reports.sent.empty());
}

} // namespace
} // namespace morvex
