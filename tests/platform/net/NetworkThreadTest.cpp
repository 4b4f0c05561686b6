#include "platform/net/NetworkThread.h"

#include "tests/platform/net/WebSocketTest.h"

#include <algorithm>
#include <atomic>
#include <functional>
#include <memory>
#include <thread>
#include <vector>

namespace morvex {
namespace {

class NetworkThreadTest : public WebSocketTest {
  protected:
    Executor& network() { return client_->executor(); }
};

Task<Executor*> whereItResumes(std::shared_ptr<WebSocket> socket) {
    (void)co_await socket->sendText("ahoj");
    (void)co_await socket->receive();
    co_return Executor::current();
}

Task<void> nothing() {
    co_return;
}

TEST_F(NetworkThreadTest, ServesASocketToACoroutineOfItsOwn) {
    TestServer server(echo);
    auto socket = connect(server);
    EXPECT_EQ(await(network(), whereItResumes(socket)), &network());
}

TEST_F(NetworkThreadTest, RunsJobsInTheirOrderOneAtATime) {
    std::vector<int> ran;
    for (int job = 0; job < 1000; ++job) network().post([&ran, job] { ran.push_back(job); });
    await(network(), nothing());
    ASSERT_EQ(ran.size(), 1000U);
    EXPECT_TRUE(std::ranges::is_sorted(ran));
}

TEST_F(NetworkThreadTest, RunsTheJobsOfManyThreads) {
    std::size_t ran = 0;
    {
        std::vector<std::jthread> threads;
        for (int thread = 0; thread < 4; ++thread)
            threads.emplace_back([this, &ran] {
                for (int job = 0; job < 10'000; ++job) network().post([&ran] { ++ran; });
            });
    }
    await(network(), nothing());
    EXPECT_EQ(ran, 40'000U);
}

TEST_F(NetworkThreadTest, LetsSocketsHaveTheirTurnWhileJobsKeepComing) {
    TestServer server(echo);
    auto socket = connect(server);
    std::atomic<bool> isOver = false;
    std::function<void()> again = [&] {
        if (!isOver) network().post(again);
    };
    network().post(again);
    EXPECT_EQ(await(network(), whereItResumes(socket)), &network());
    isOver = true;
    // The job that ran meanwhile may have posted another one behind the first of these.
    await(network(), nothing());
    await(network(), nothing());
}

TEST_F(NetworkThreadTest, RunsNoJobAfterItsClientAndKeepsNone) {
    auto network = std::make_shared<NetworkThread>("test", NetworkLimits{}, "");
    auto held = std::make_shared<int>();
    network->post([held] {});
    network->stop();
    network->post([held] { ADD_FAILURE() << "a job ran late"; });
    EXPECT_EQ(held.use_count(), 1);
}

TEST_F(NetworkThreadTest, MayStopWhileOthersStillPost) {
    for (int round = 0; round < 100; ++round) {
        auto network = std::make_shared<NetworkThread>("test", NetworkLimits{}, "");
        auto held = std::make_shared<int>();
        std::jthread other([network, held] {
            for (int job = 0; job < 100; ++job) network->post([held] {});
        });
        network->stop();
        other.join();
        EXPECT_EQ(held.use_count(), 1);
    }
}

} // namespace
} // namespace morvex
