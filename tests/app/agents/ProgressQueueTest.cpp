#include "app/agents/ProgressQueue.h"

#include "platform/memory/ManualExecutor.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

using testing::ElementsAre;

class ProgressQueueTest : public testing::Test {
  protected:
    void progress(std::string text) { queue->add({.relace = {}, .prubeh = std::move(text)}); }

    void session(std::string id) { queue->add({.relace = std::move(id), .prubeh = {}}); }

    ManualExecutor executor;
    std::vector<std::string> heard;
    std::shared_ptr<Bezici> task = std::make_shared<Bezici>();
    std::shared_ptr<ProgressQueue> queue = std::make_shared<ProgressQueue>(
        executor,
        AgentListener{[this](std::string text) { heard.push_back(std::move(text)); },
                      [this](std::string id) { heard.push_back("session " + id); }},
        task);
};

TEST_F(ProgressQueueTest, PassesAllOnInOrderByOneJob) {
    progress("a");
    session("s");
    progress("b");
    queue->add({.relace = "t", .prubeh = "c"});
    EXPECT_TRUE(heard.empty());
    EXPECT_EQ(executor.runUntilIdle(), 1);
    EXPECT_THAT(heard, ElementsAre("a", "session s", "b", "session t", "c"));
    progress("d");
    EXPECT_EQ(executor.runUntilIdle(), 1);
    EXPECT_EQ(heard.back(), "d");
}

TEST_F(ProgressQueueTest, TheTaskHasItsProgressBeforeItIsTold) {
    std::vector<std::optional<std::string>> seen;
    queue = std::make_shared<ProgressQueue>(
        executor, AgentListener{[&](const std::string&) { seen.push_back(task->prubeh); }, {}}, task);
    progress("a");
    progress("b");
    executor.runUntilIdle();
    EXPECT_THAT(seen, ElementsAre("a", "b"));
}

TEST_F(ProgressQueueTest, LateProgressFindsNoTaskAndIsStillPassedOn) {
    progress("late");
    task.reset();
    executor.runUntilIdle();
    EXPECT_THAT(heard, ElementsAre("late"));
}

TEST_F(ProgressQueueTest, AnEmptyListenerHearsNothing) {
    queue = std::make_shared<ProgressQueue>(executor, AgentListener{}, task);
    progress("a");
    session("s");
    executor.runUntilIdle();
    EXPECT_EQ(task->prubeh, "a");
}

TEST_F(ProgressQueueTest, AMainThreadThatIsFarBehindMissesTheOldestProgress) {
    const std::string longText(990, 'x');
    for (int i = 10'000; i < 20'000; ++i) progress(std::to_string(i) + longText);
    executor.runUntilIdle();
    ASSERT_GT(heard.size(), 900U);
    ASSERT_LT(heard.size(), 1054U);
    EXPECT_EQ(heard.front(), std::to_string(20'000 - heard.size()) + longText);
    EXPECT_EQ(heard.back(), "19999" + longText);
}

TEST_F(ProgressQueueTest, TheLatestSessionIsNeverMissed) {
    const std::string longText(1000, 'x');
    session("old");
    session("new");
    for (int i = 0; i < 10'000; ++i) progress(longText);
    executor.runUntilIdle();
    EXPECT_EQ(heard.front(), "session new");
    EXPECT_EQ(std::ranges::count(heard, "session old"), 0);
}

TEST_F(ProgressQueueTest, OfATextTheFirstThousandCharactersArePassedOn) {
    const std::string horse = "🐎";
    std::string thousand;
    for (int i = 0; i < 1000; ++i) thousand += horse;
    progress(thousand);
    progress(thousand + horse);
    progress(std::string(3'000'000, 'x'));
    executor.runUntilIdle();
    EXPECT_THAT(heard, ElementsAre(thousand, thousand, std::string(1000, 'x')));
    EXPECT_EQ(task->prubeh, std::string(1000, 'x')) << "the status has the same";
}

TEST_F(ProgressQueueTest, ACharacterOfEndlessMarksIsCutToo) {
    std::string character = "e";
    while (character.size() < 3'000'000) character += "\u0301";
    progress(character);
    executor.runUntilIdle();
    EXPECT_THAT(heard, ElementsAre(character.substr(0, 7999)));
}

} // namespace
} // namespace morvex
