#include "foundation/EventStream.h"

#include "foundation/Task.h"
#include "foundation/TaskScope.h"
#include "foundation/ThreadExecutor.h"
#include "platform/memory/ManualExecutor.h"
#include "tests/support/Await.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <deque>
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

/// Pushes numbers from 1 on, never more than `most` beyond what was taken.
Task<void> produce(std::shared_ptr<EventStream<int>> stream, int count, std::size_t most,
                   std::stop_token stop, std::shared_ptr<int> pushed) {
    while (*pushed < count && !stop.stop_requested()) {
        co_await stream->room(most, stop);
        stream->push(++*pushed);
    }
}

Task<void> holdInto(std::shared_ptr<EventStream<int>> stream, std::stop_token stop,
                    std::deque<EventStream<int>::Held>& held) {
    while (auto event = co_await stream->nextHeld(stop)) held.push_back(*std::move(event));
}

Task<int> takeOne(std::shared_ptr<EventStream<int>> stream) {
    auto event = co_await stream->next();
    co_return event.value_or(0);
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

TEST(EventStream, AProducerThatAsksForRoomGoesOnAsTheConsumerTakes) {
    ManualExecutor executor;
    auto stream = std::make_shared<EventStream<int>>();
    auto pushed = std::make_shared<int>(0);
    executor.start(produce(stream, 10, 3, {}, pushed));
    executor.runUntilIdle();
    EXPECT_EQ(*pushed, 3);
    for (int taken = 1; taken <= 10; ++taken) {
        EXPECT_EQ(executor.run(takeOne(stream)), taken);
        EXPECT_EQ(*pushed, std::min(taken + 3, 10));
    }
}

TEST(EventStream, AProducerWaitsForTheWeightOfWhatItPushed) {
    ManualExecutor executor;
    auto stream = std::make_shared<EventStream<int>>();
    stream->push(1, 100);
    stream->push(2, 5);
    auto pushed = std::make_shared<int>(2);
    executor.start(produce(stream, 3, 6, {}, pushed));
    executor.runUntilIdle();
    EXPECT_EQ(*pushed, 2);
    EXPECT_EQ(executor.run(takeOne(stream)), 1);
    EXPECT_EQ(*pushed, 3) << "the heavy one has gone";
}

TEST(EventStream, AStopAnEndAndAClearingEndTheWaitForRoom) {
    for (auto how : {0, 1, 2}) {
        ManualExecutor executor;
        auto stream = std::make_shared<EventStream<int>>();
        auto pushed = std::make_shared<int>(0);
        std::stop_source stop;
        executor.start(produce(stream, 2, 1, stop.get_token(), pushed));
        executor.runUntilIdle();
        ASSERT_EQ(*pushed, 1);
        if (how == 0) stop.request_stop();
        if (how == 1) stream->end();
        if (how == 2) stream->clear();
        executor.runUntilIdle();
        EXPECT_EQ(*pushed, 2) << how;
    }
}

TEST(EventStream, AProducerAndAConsumerOnTwoThreadsWaitForEachOther) {
    ThreadExecutor consumer("consumer");
    ThreadExecutor producer("producer");
    for (std::size_t most : {1U, 2U, 7U}) {
        auto stream = std::make_shared<EventStream<int>>();
        auto pushed = std::make_shared<int>(0);
        std::thread driver([&] {
            await(producer, produce(stream, 10'000, most, {}, pushed));
            stream->end();
        });
        EXPECT_EQ(await(consumer, sum(stream)), 50'005'000L);
        driver.join();
    }
}

TEST(EventStream, AHeldEventCountsUntilItIsLetGo) {
    ManualExecutor executor;
    auto stream = std::make_shared<EventStream<int>>();
    auto pushed = std::make_shared<int>(0);
    std::stop_source stop;
    TaskScope producing(executor);
    producing.spawn(produce(stream, 5, 2, {}, pushed));
    executor.runUntilIdle();
    ASSERT_EQ(*pushed, 2);

    TaskScope consuming(executor);
    std::deque<EventStream<int>::Held> held;
    consuming.spawn(holdInto(stream, stop.get_token(), held));
    executor.runUntilIdle();
    ASSERT_EQ(held.size(), 2U);
    EXPECT_EQ(*pushed, 2) << "what is held counts";

    held.pop_front();
    executor.runUntilIdle();
    EXPECT_EQ(*pushed, 3);
    held.clear();
    executor.runUntilIdle();
    EXPECT_EQ(*pushed, 5);
    held.clear();
    stop.request_stop();
    executor.runUntilIdle();
    EXPECT_EQ(producing.live() + consuming.live(), 0);
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
