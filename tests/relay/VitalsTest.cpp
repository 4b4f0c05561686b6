#include "relay/Vitals.h"

#include <gtest/gtest.h>

using namespace morvex;

namespace {

using std::chrono::seconds;
using Verdict = Vitals::Verdict;
using Stage = Vitals::Stage;

struct VitalsTest : testing::Test {
    RelayLimits limits;
    Vitals::Moment start{seconds{1000}};
    Vitals vitals{limits, start};
    Vitals::Signs signs{.stage = Stage::loggedIn};

    Verdict after(int count) { return vitals.judge(signs, start + seconds{count}); }
};

} // namespace

TEST_F(VitalsTest, ALoginHasTenSeconds) {
    signs.stage = Stage::loggingIn;
    EXPECT_EQ(after(10), Verdict::well);
    signs.bytesRead = 1;
    EXPECT_EQ(after(11), Verdict::late);
}

TEST_F(VitalsTest, ASilentDeviceIsAskedEveryThirtySecondsAndGoesAfterNinety) {
    EXPECT_EQ(after(29), Verdict::well);
    EXPECT_EQ(after(30), Verdict::ping);
    EXPECT_EQ(after(31), Verdict::well);
    EXPECT_EQ(after(60), Verdict::ping);
    EXPECT_EQ(after(90), Verdict::ping);
    EXPECT_EQ(after(91), Verdict::dead);
}

TEST_F(VitalsTest, AnyByteOfTheDeviceIsASignOfLife) {
    after(80);
    signs.bytesRead = 1;
    EXPECT_EQ(after(85), Verdict::well);
    EXPECT_EQ(after(175), Verdict::ping);
    EXPECT_EQ(after(176), Verdict::dead);
}

TEST_F(VitalsTest, ADeviceThatIsNotReadIsNotSilent) {
    signs.isReadingPaused = true;
    EXPECT_EQ(after(89), Verdict::well);
    EXPECT_EQ(after(200), Verdict::well);
    signs.isReadingPaused = false;
    EXPECT_EQ(after(250), Verdict::well) << "it may have been let go only now";
    EXPECT_EQ(after(280), Verdict::ping);
    EXPECT_EQ(after(341), Verdict::dead);
}

TEST_F(VitalsTest, ADeviceThatTakesNothingForTwoMinutesAndAHalfIsStalled) {
    signs.waiting = 100;
    signs.bytesRead = 1;
    after(0);
    signs.bytesRead = 2;
    EXPECT_EQ(after(75), Verdict::well);
    signs.bytesRead = 3;
    EXPECT_EQ(after(150), Verdict::well);
    signs.bytesRead = 4;
    EXPECT_EQ(after(151), Verdict::stalled);
}

TEST_F(VitalsTest, WhatBeginsToWaitLateIsNotWaitedForSinceEarlier) {
    signs.bytesRead = 1;
    after(0);
    signs.bytesRead = 2;
    signs.waiting = 100;
    EXPECT_EQ(after(70), Verdict::well);
    signs.bytesRead = 3;
    EXPECT_EQ(after(151), Verdict::well);
    signs.bytesRead = 4;
    EXPECT_EQ(after(221), Verdict::stalled);
}

TEST_F(VitalsTest, ASlowDeviceThatTakesSomethingIsNotStalled) {
    signs.waiting = 100;
    for (int count = 0; count < 600; count += 50) {
        ++signs.bytesWritten;
        ++signs.bytesRead;
        EXPECT_EQ(after(count), Verdict::well);
    }
}

TEST_F(VitalsTest, AFrameHasTwoMinutesAndAHalfHoweverItsBytesCome) {
    signs.isWithinFrame = true;
    after(0);
    for (int count = 10; count <= 150; count += 10) {
        ++signs.bytesRead;
        EXPECT_EQ(after(count), Verdict::well) << count;
    }
    ++signs.bytesRead;
    EXPECT_EQ(after(151), Verdict::unfinished);
}

TEST_F(VitalsTest, EachFrameHasATimeOfItsOwn) {
    signs.isWithinFrame = true;
    for (int count = 0; count < 600; count += 50) {
        ++signs.bytesRead;
        if (count % 150 == 0) ++signs.framesRead;
        EXPECT_EQ(after(count), Verdict::well) << count;
    }
    signs.isWithinFrame = false;
    ++signs.bytesRead;
    after(620);
    signs.isWithinFrame = true;
    for (int count = 700; count <= 850; count += 50) {
        ++signs.bytesRead;
        EXPECT_EQ(after(count), Verdict::well) << count;
    }
}

TEST_F(VitalsTest, ClosingHasItsOwnTime) {
    after(29);
    signs.stage = Stage::closing;
    EXPECT_EQ(after(30), Verdict::well);
    EXPECT_EQ(after(35), Verdict::well);
    EXPECT_EQ(after(36), Verdict::lingering);
}
