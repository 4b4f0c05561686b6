#include "tests/support/PairingHarness.h"

namespace morvex {
namespace {

using namespace std::chrono_literals;

/// When a link that was lost is tried again.
class NextAttemptTest : public PairingHarness {
  protected:
    /// The phone's link, lost, with twenty seconds until its next attempt.
    void loseLink() {
        startSecured()->breakWith("Relay neodpověděl.");
        waitForTwentySeconds();
    }

    void waitForTwentySeconds() {
        executor.runUntilIdle();
        for (auto wait : {1s, 2s, 5s, 10s}) pass(wait);
    }

    void pass(Clock::Duration time) {
        clock.advance(time);
        executor.runUntilIdle();
    }

    void changeNetwork() {
        network.change();
        executor.runUntilIdle();
    }

    std::optional<Clock::Duration> left() {
        const auto& when = companion->stav().nextAttempt.value();
        if (!when) return std::nullopt;
        return *when - clock.sinceBoot();
    }
};

TEST_F(NextAttemptTest, IsToldWhileTheLinkWaitsForIt) {
    startSecured()->breakWith("Relay neodpověděl.");
    EXPECT_EQ(left(), std::nullopt);
    executor.runUntilIdle();
    for (auto wait : {1s, 2s, 5s, 10s, 20s, 30s}) {
        EXPECT_EQ(left(), wait);
        pass(wait);
    }
    EXPECT_EQ(left(), 30s);
    sockets.layOut();
    pass(30s);
    EXPECT_LE(left().value_or(0s), 0s) << "it is being made";
}

TEST_F(NextAttemptTest, IsNotToldAnyMoreWhileAnEarlyOneIsMade) {
    loseLink();
    sockets.layOut();
    companion->connectNow();
    executor.runUntilIdle();
    EXPECT_EQ(left(), std::nullopt);
}

TEST_F(NextAttemptTest, IsNotToldAnyMoreOnceTheLinkIsThereOrGone) {
    loseLink();
    auto socket = sockets.layOut();
    pass(20s);
    phone.attach(socket, *mac);
    phone.logIn();
    executor.runUntilIdle();
    EXPECT_EQ(left(), std::nullopt);
    socket->breakWith("Relay neodpověděl.");
    executor.runUntilIdle();
    ASSERT_EQ(left(), 1s);
    sleep.fallAsleep();
    EXPECT_EQ(left(), std::nullopt);
}

TEST_F(NextAttemptTest, BeginsAtOnceWhenAPersonSaysSo) {
    loseLink();
    const auto attempts = sockets.urls.size();
    companion->connectNow();
    executor.runUntilIdle();
    EXPECT_EQ(sockets.urls.size(), attempts + 1);
    EXPECT_EQ(left(), 30s);
}

TEST_F(NextAttemptTest, BeginsOnceASecondAfterTheNetworkHasChanged) {
    loseLink();
    const auto attempts = sockets.urls.size();
    for (int message = 0; message < 12; ++message) changeNetwork();
    pass(999ms);
    EXPECT_EQ(sockets.urls.size(), attempts) << "the network settles first";
    pass(1ms);
    EXPECT_EQ(sockets.urls.size(), attempts + 1);
    pass(1s);
    EXPECT_EQ(sockets.urls.size(), attempts + 1);
    changeNetwork();
    pass(1s);
    EXPECT_EQ(sockets.urls.size(), attempts + 2) << "each change counts";
}

TEST_F(NextAttemptTest, AChangeOfTheNetworkLeavesALinkThatStands) {
    auto socket = startSecured();
    const auto attempts = sockets.urls.size();
    changeNetwork();
    pass(2s);
    EXPECT_EQ(sockets.urls.size(), attempts);
    EXPECT_TRUE(socket->closed.empty());
    EXPECT_EQ(availability(), "Připraven");
}

TEST_F(NextAttemptTest, TheLinkOfAPairingTriesAtOnceToo) {
    start();
    beginPairing()->breakWith("Relay neodpověděl.");
    waitForTwentySeconds();
    const auto attempts = sockets.urls.size();
    changeNetwork();
    pass(1s);
    EXPECT_EQ(sockets.urls.size(), attempts + 1);
}

TEST_F(NextAttemptTest, AWakeTriesAtOnce) {
    loseLink();
    sleep.fallAsleep();
    executor.runUntilIdle();
    const auto attempts = sockets.urls.size();
    sleep.wake();
    executor.runUntilIdle();
    EXPECT_EQ(sockets.urls.size(), attempts + 1);
}

TEST_F(NextAttemptTest, AnEndWhileTheNetworkSettlesIsClean) {
    loseLink();
    changeNetwork();
    const auto attempts = sockets.urls.size();
    end();
    EXPECT_EQ(sockets.urls.size(), attempts);
    EXPECT_FALSE(network.isWatched());
}

} // namespace
} // namespace morvex
