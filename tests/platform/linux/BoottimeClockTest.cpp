#include "platform/linux/BoottimeClock.h"

#include "foundation/ThreadExecutor.h"
#include "tests/support/Await.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <latch>
#include <sstream>
#include <string>

namespace morvex {
namespace {

using namespace std::chrono_literals;

class BoottimeClockTest : public testing::Test {
  protected:
    void SetUp() override { clock_ = BoottimeClock::create().value(); }

    /// Keeps the clock's thread busy until `go_` counts down, so that what follows becomes due together.
    void holdCallbacks() {
        std::latch held(1);
        clock_->at(0ns, [this, &held] {
            held.count_down();
            go_.wait();
        });
        held.wait();
    }

    /// Waits until everything that is due now has been called.
    void drain() {
        std::latch drained(1);
        clock_->at(clock_->sinceBoot(), [&drained] { drained.count_down(); });
        drained.wait();
    }

    std::unique_ptr<BoottimeClock> clock_;
    std::latch go_{1};
};

TEST_F(BoottimeClockTest, CallsBackWhenTheTimeHasCome) {
    auto when = clock_->sinceBoot() + 20ms;
    Clock::Duration called{};
    std::latch done(1);
    clock_->at(when, [&] {
        called = clock_->sinceBoot();
        done.count_down();
    });
    done.wait();
    EXPECT_GE(called, when);
}

/// Both are seen from outside: the timer says which clock it follows, the time is the system's own.
TEST_F(BoottimeClockTest, CountsTheTimeOfASuspend) {
    auto timers = std::filesystem::directory_iterator("/proc/self/fdinfo");
    auto follows = [](const std::filesystem::directory_entry& entry) {
        std::stringstream text;
        text << std::ifstream(entry.path()).rdbuf();
        return text.str().contains("clockid: " + std::to_string(CLOCK_BOOTTIME) + "\n");
    };
    EXPECT_TRUE(std::any_of(begin(timers), end(timers), follows));

    timespec before{};
    ::clock_gettime(CLOCK_BOOTTIME, &before);
    auto told = clock_->sinceBoot();
    timespec after{};
    ::clock_gettime(CLOCK_BOOTTIME, &after);
    auto span = [](const timespec& time) {
        return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
    };
    EXPECT_LE(span(before), told);
    EXPECT_LE(told, span(after));
}

TEST_F(BoottimeClockTest, CallsInTheOrderOfTheTimesAndThenOfTheCalls) {
    holdCallbacks();
    std::string order;
    for (auto [when, name] : {std::pair(3ns, "c"), {1ns, "a"}, {2ns, "b"}, {3ns, "d"}, {-1ns, "0"}})
        clock_->at(when, [&order, name] { order += name; });
    go_.count_down();
    drain();
    EXPECT_EQ(order, "0abcd");
}

TEST_F(BoottimeClockTest, AnEarlierTimerOvertakesOneThatAlreadyWaits) {
    std::latch early(1);
    bool lateCalled = false;
    clock_->at(clock_->sinceBoot() + 1h, [&] { lateCalled = true; });
    clock_->at(clock_->sinceBoot() + 5ms, [&] { early.count_down(); });
    early.wait();
    EXPECT_FALSE(lateCalled);
}

TEST_F(BoottimeClockTest, WhatWasForgottenIsNotCalledEvenWhenItIsDue) {
    holdCallbacks();
    bool called = false;
    auto timer = clock_->at(0ns, [&called] { called = true; });
    clock_->forget(timer);
    clock_->forget(timer);
    go_.count_down();
    drain();
    EXPECT_FALSE(called);
}

TEST_F(BoottimeClockTest, ForgettingDestroysTheCallbackOutsideItsLock) {
    auto asksTheClock = std::shared_ptr<int>(new int, [this](int* held) {
        delete held;
        clock_->forget(0);
    });
    auto timer = clock_->at(clock_->sinceBoot() + 1h, [asksTheClock] {});
    asksTheClock.reset();
    clock_->forget(timer);
}

TEST_F(BoottimeClockTest, ACallbackMaySetTheNextTimer) {
    std::latch done(3);
    std::function<void()> again = [&] {
        done.count_down();
        if (!done.try_wait()) clock_->at(clock_->sinceBoot(), again);
    };
    clock_->at(0ns, again);
    done.wait();
    drain();
}

TEST_F(BoottimeClockTest, ItsEndDestroysWhatWaitsUncalled) {
    bool called = false;
    auto held = std::make_shared<int>(1);
    clock_->at(clock_->sinceBoot() + 1h, [held, &called] { called = true; });
    clock_.reset();
    EXPECT_EQ(held.use_count(), 1);
    EXPECT_FALSE(called);
}

TEST_F(BoottimeClockTest, TellsTheWallClockToTheMicrosecond) {
    auto before = std::chrono::floor<std::chrono::microseconds>(std::chrono::system_clock::now());
    auto now = clock_->now();
    EXPECT_LE(before, now);
    EXPECT_LE(now, std::chrono::system_clock::now());
}

TEST_F(BoottimeClockTest, AWaitOnItResumesOnItsOwnExecutor) {
    ThreadExecutor executor("test");
    EXPECT_TRUE(await(executor, sleepFor(*clock_, 5ms, {})));
}

} // namespace
} // namespace morvex
