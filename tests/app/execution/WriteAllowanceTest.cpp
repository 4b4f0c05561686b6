#include "app/execution/WriteAllowance.h"

#include "platform/memory/ManualClock.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

using namespace std::chrono_literals;

class WriteAllowanceTest : public testing::Test {
  protected:
    ManualClock clock;
    WriteAllowance allowance{clock, 100};
};

TEST_F(WriteAllowanceTest, GivesAsMuchAsItsLimitAndNoByteMore) {
    EXPECT_TRUE(allowance.take(60));
    EXPECT_FALSE(allowance.take(41));
    EXPECT_TRUE(allowance.take(40));
    EXPECT_FALSE(allowance.take(1));
    EXPECT_TRUE(allowance.take(0));
}

TEST_F(WriteAllowanceTest, AnAmountBeyondEveryNumberIsRefused) {
    EXPECT_TRUE(allowance.take(1));
    EXPECT_FALSE(allowance.take(std::numeric_limits<std::size_t>::max()));
}

TEST_F(WriteAllowanceTest, WhatWasTakenComesBackWhenItIsAnHourOldAndNotBefore) {
    EXPECT_TRUE(allowance.take(50));
    clock.advance(30min);
    EXPECT_TRUE(allowance.take(50));
    clock.advance(30min);
    EXPECT_FALSE(allowance.take(1)) << "the first is just an hour old, within its minute";
    clock.advance(1min);
    EXPECT_TRUE(allowance.take(50)) << "the first has come back";
    EXPECT_FALSE(allowance.take(1)) << "the second has not";
    clock.advance(30min);
    EXPECT_TRUE(allowance.take(50));
}

TEST_F(WriteAllowanceTest, NoHourHoldsMoreThanTheLimitWhereverItBegins) {
    clock.advance(59s);
    EXPECT_TRUE(allowance.take(100));
    clock.advance(59min + 59s);
    EXPECT_FALSE(allowance.take(1)) << "an hour less a second later";
}

TEST_F(WriteAllowanceTest, WhatWasNotWrittenIsGivenBack) {
    EXPECT_TRUE(allowance.take(100));
    allowance.giveBack(30);
    EXPECT_TRUE(allowance.take(30));
    EXPECT_FALSE(allowance.take(1));
}

TEST_F(WriteAllowanceTest, GivingBackAfterAnHourGivesNothingTwice) {
    EXPECT_TRUE(allowance.take(100));
    clock.advance(2h);
    allowance.giveBack(100);
    EXPECT_TRUE(allowance.take(100));
    EXPECT_FALSE(allowance.take(1));
}

} // namespace
} // namespace morvex
