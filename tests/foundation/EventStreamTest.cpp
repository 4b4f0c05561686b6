#include "foundation/EventStream.h"

#include "foundation/Task.h"
#include "foundation/ThreadExecutor.h"
#include "platform/memory/ManualExecutor.h"
#include "tests/support/Await.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morvex {
namespace {

Task<std::vector<int>> collect(std::shared_ptr<EventStream<int>> stream, std::stop_token stop) {
    std::vector<int> seen;
    while (auto event = co_await stream->next(stop)) seen.push_back(*event);
    co_return seen;
}

Task<void> append(std::shared_ptr<EventStream<int>> stream, std::shared_ptr<std::vector<int>> seen) {
    while (auto event = co_await stream->next()) seen->push_back(*event);
}

Task<long> sum(std::shared_ptr<EventStream<int>> stream) {
    long total = 0;
    while (auto event = co_await stream->next()) total += *event;
    co_return total;
}

TEST(EventStream, KeepsTheOrderAndGivesWhatWasPushedBeforeItsEnd) {
    ManualExecutor executor;
    auto stream = std::make_shared<EventStream<int>>();
    stream->push(1);
    stream->push(2);
    stream->end();
    stream->push(3);
    EXPECT_EQ(executor.run(collect(stream, {})), (std::vector{1, 2}));
}

TEST(EventStream, AStopEndsTheWaitAtOnceAndLeavesTheRestToALaterConsumer) {
    ManualExecutor executor;
    auto stream = std::make_shared<EventStream<int>>();
    std::stop_source stop;
    EXPECT_FALSE(executor.run(collect(stream, stop.get_token())));
    stop.request_stop();
    EXPECT_GT(executor.runUntilIdle(), 0);
    stream->push(5);
    stream->end();
    EXPECT_EQ(executor.run(collect(stream, stop.get_token())), std::vector<int>{});
    EXPECT_EQ(executor.run(collect(stream, {})), std::vector{5});
}

TEST(EventStream, AnEventThatMeetsAStopOnItsWayIsNotDelivered) {
    ManualExecutor executor;
    auto stream = std::make_shared<EventStream<int>>();
    std::stop_source stop;
    executor.run(collect(stream, stop.get_token()));
    stream->push(1);
    stop.request_stop();
    executor.runUntilIdle();
    stream->end();
    EXPECT_EQ(executor.run(collect(stream, {})), std::vector{1});
}

TEST(EventStream, ALaterConsumerSeesNothingOfWhatWasCleared) {
    ManualExecutor executor;
    auto stream = std::make_shared<EventStream<int>>();
    stream->push(1);
    stream->push(2);
    stream->clear();
    stream->push(3);
    stream->end();
    EXPECT_EQ(executor.run(collect(stream, {})), std::vector{3});
}

TEST(EventStream, AFullQueueLetsOtherJobsRun) {
    ManualExecutor executor;
    auto stream = std::make_shared<EventStream<int>>();
    for (int i = 0; i < 1000; ++i) stream->push(i);
    stream->end();
    auto seen = std::make_shared<std::vector<int>>();
    executor.start(append(stream, seen));
    std::size_t seenByOther = 0;
    executor.post([&] { executor.post([&] { seenByOther = seen->size(); }); });
    executor.runUntilIdle();
    EXPECT_EQ(seen->size(), 1000U);
    EXPECT_GT(seenByOther, 0U);
    EXPECT_LT(seenByOther, 1000U);
}

TEST(EventStream, CrossesThreadsWithoutLosingAnything) {
    ThreadExecutor consumer("consumer");
    auto stream = std::make_shared<EventStream<int>>();
    std::thread producer([stream] {
        for (int i = 1; i <= 100'000; ++i) stream->push(i);
        stream->end();
    });
    EXPECT_EQ(await(consumer, sum(stream)), 5'000'050'000L);
    producer.join();
}

TEST(EventStream, AStopFromAnotherThreadMeetsAPushFromAThird) {
    ThreadExecutor consumer("consumer");
    for (int round = 0; round < 500; ++round) {
        auto stream = std::make_shared<EventStream<int>>();
        std::stop_source stop;
        std::thread pusher([stream] { stream->push(1); });
        std::thread stopper([&stop] { stop.request_stop(); });
        auto seen = await(consumer, collect(stream, stop.get_token()));
        EXPECT_LE(seen.size(), 1U);
        pusher.join();
        stopper.join();
    }
}

} // namespace
} // namespace morvex
