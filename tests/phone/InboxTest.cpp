#include "phone/Inbox.h"

#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

using namespace std::chrono_literals;

class InboxTest : public testing::Test {
  protected:
    Task<void> take(std::optional<Clock::Duration> until) {
        taken = co_await inbox.next(until);
        isTaken = true;
    }

    void wait(std::optional<Clock::Duration> until) {
        executor.start(take(until));
        executor.runUntilIdle();
    }

    ManualExecutor executor;
    ManualClock clock;
    std::stop_source interruption;
    Inbox inbox{clock, interruption.get_token()};
    std::optional<Inbox::Event> taken;
    bool isTaken = false;
};

TEST_F(InboxTest, GivesWhatComesAndLeavesNoTimerBehind) {
    wait(10s);
    EXPECT_FALSE(isTaken);
    inbox.push(Inbox::Line{"ahoj"});
    executor.runUntilIdle();
    ASSERT_TRUE(taken);
    EXPECT_EQ(std::get<Inbox::Line>(*taken).text, "ahoj");
    EXPECT_EQ(clock.waiting(), 0U);
}

TEST_F(InboxTest, GivesNothingAtTheDeadline) {
    wait(10s);
    clock.advance(9s);
    executor.runUntilIdle();
    EXPECT_FALSE(isTaken);
    clock.advance(1s);
    executor.runUntilIdle();
    EXPECT_TRUE(isTaken);
    EXPECT_FALSE(taken);
    EXPECT_FALSE(inbox.isInterrupted());
}

TEST_F(InboxTest, GivesNothingOnceInterrupted) {
    wait(std::nullopt);
    interruption.request_stop();
    executor.runUntilIdle();
    EXPECT_TRUE(isTaken);
    EXPECT_FALSE(taken);
    inbox.push(Inbox::EndOfInput{});
    wait(std::nullopt);
    EXPECT_FALSE(taken);
}

} // namespace
} // namespace morvex
