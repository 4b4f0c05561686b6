#include "tests/shared-apple/RelayLinkFixture.h"

namespace morvex::test {
namespace {

using namespace std::chrono_literals;

class RelayLinkTryNowTest : public RelayLinkFixture {
  protected:
    void tryNow() {
        EXPECT_TRUE(executor.run(link.tryNow()));
        executor.runUntilIdle();
    }

    /// With so many failed attempts behind it; the next one is waited for.
    void startAndFail(std::initializer_list<std::chrono::seconds> waits) {
        executor.start(link.start());
        executor.runUntilIdle();
        for (auto wait : waits) pass(wait);
    }
};

TEST_F(RelayLinkTryNowTest, TheAttemptThatIsWaitedForBeginsAtOnceAndTheNextWaitIsTheUsualOne) {
    startAndFail({1s, 2s, 5s, 10s});
    (void)takeEvents();
    EXPECT_EQ(clock.untilNext(), 20s);
    const auto attempts = sockets.urls.size();
    tryNow();
    EXPECT_EQ(sockets.urls.size(), attempts + 1);
    EXPECT_EQ(takeEvents().back(), Udalost(RelayLink::Pripojuji{7, 30}));
    EXPECT_EQ(clock.untilNext(), 30s) << "and nothing is left of the wait before";
    tryNow();
    EXPECT_EQ(takeEvents().back(), Udalost(RelayLink::Pripojuji{8, 30}));
}

TEST_F(RelayLinkTryNowTest, WhileNothingIsWaitedForItChangesNothingOfALaterWait) {
    tryNow();
    EXPECT_TRUE(sockets.urls.empty()) << "a link that was not started";
    auto socket = logIn();
    tryNow();
    EXPECT_TRUE(socket->closed.empty());
    socket->breakWith("přerušeno");
    executor.runUntilIdle();
    EXPECT_EQ(sockets.urls.size(), 1U);
    pass(999ms);
    EXPECT_EQ(sockets.urls.size(), 1U);
    pass(1ms);
    EXPECT_EQ(sockets.urls.size(), 2U);
}

TEST_F(RelayLinkTryNowTest, ALinkThatIsStoppedDuringItsWaitTriesNoMore) {
    startAndFail({});
    const auto attempts = sockets.urls.size();
    executor.start(link.stop());
    tryNow();
    EXPECT_EQ(sockets.urls.size(), attempts);
}

} // namespace
} // namespace morvex::test
