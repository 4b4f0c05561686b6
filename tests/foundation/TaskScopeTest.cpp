#include "foundation/TaskScope.h"

#include "foundation/Clock.h"
#include "foundation/OneShot.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"

#include <gtest/gtest.h>

#include <string>

namespace morvex {
namespace {

using namespace std::chrono_literals;

Task<void> sleepAndNote(Clock& clock, Clock::Duration duration, std::stop_token stop, std::string* note) {
    *note = co_await sleepFor(clock, duration, stop) ? "elapsed" : "interrupted";
}

Task<void> note(std::string* text) {
    *text = "ran";
    co_return;
}

Task<std::string> answerOf(std::shared_ptr<OneShot<Result<int>>> shot) {
    auto result = co_await shot->wait();
    co_return result ? std::to_string(*result) : result.error().popis().czech();
}

TEST(TaskScope, StartsATaskAfterTheCurrentJob) {
    ManualExecutor executor;
    TaskScope scope(executor);
    std::string text;
    executor.post([&] {
        scope.spawn(note(&text));
        EXPECT_EQ(text, "");
    });
    executor.runUntilIdle();
    EXPECT_EQ(text, "ran");
}

TEST(TaskScope, AStopWakesASleepAtOnceAndJoinWaitsForTheTask) {
    ManualExecutor executor;
    ManualClock clock;
    TaskScope scope(executor);
    std::string text;
    scope.spawn(sleepAndNote(clock, 10s, scope.token(), &text));
    EXPECT_FALSE(executor.run(scope.join()));
    EXPECT_EQ(clock.untilNext(), 10s);
    scope.stop();
    executor.runUntilIdle();
    EXPECT_EQ(text, "interrupted");
    EXPECT_EQ(clock.waiting(), 0U);
    EXPECT_TRUE(executor.run(scope.join()));
}

TEST(TaskScope, AfterAStopNothingIsStarted) {
    ManualExecutor executor;
    TaskScope scope(executor);
    scope.stop();
    std::string text;
    scope.spawn(note(&text));
    executor.runUntilIdle();
    EXPECT_EQ(text, "");
}

TEST(TaskScope, AScopeThatDiesBeforeItsTasksEndsTheProcess) {
    EXPECT_DEATH(
        {
            ManualExecutor executor;
            ManualClock clock;
            std::string text;
            TaskScope scope(executor);
            scope.spawn(sleepAndNote(clock, 10s, scope.token(), &text));
            executor.runUntilIdle();
        },
        "before its tasks ended");
}

TEST(Sleep, LastsUntilTheClockHasMoved) {
    ManualExecutor executor;
    ManualClock clock;
    auto sleeping = std::make_shared<std::string>();
    executor.start(sleepAndNote(clock, 10s, {}, sleeping.get()));
    executor.runUntilIdle();
    clock.advance(9s);
    executor.runUntilIdle();
    EXPECT_EQ(*sleeping, "");
    clock.advance(1s);
    executor.runUntilIdle();
    EXPECT_EQ(*sleeping, "elapsed");
}

TEST(OneShot, TheFirstAnswerWins) {
    ManualExecutor executor;
    auto shot = std::make_shared<OneShot<Result<int>>>();
    EXPECT_TRUE(shot->answer(1));
    EXPECT_FALSE(shot->answer(2));
    EXPECT_EQ(executor.run(answerOf(shot)), "1");
}

TEST(OneShot, AReplyThatIsDroppedAnswersThatItWasAbandoned) {
    ManualExecutor executor;
    auto shot = std::make_shared<OneShot<Result<int>>>();
    {
        Reply<int> reply(shot);
    }
    EXPECT_EQ(executor.run(answerOf(shot)), Abandoned{}.popis().czech());
}

} // namespace
} // namespace morvex
