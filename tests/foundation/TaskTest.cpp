#include "foundation/Task.h"

#include "foundation/ThreadExecutor.h"
#include "platform/memory/ManualExecutor.h"
#include "shared/base/Try.h"
#include "tests/support/Await.h"

#include <gtest/gtest.h>

#include <memory>
#include <stdexcept>
#include <string>
#include <thread>

namespace morvex {
namespace {

Task<int> number(int value) {
    co_return value;
}

Task<long> sumDown(int depth) {
    if (depth == 0) co_return 0;
    co_return depth + co_await sumDown(depth - 1);
}

Task<int> throwing() {
    throw std::runtime_error("broken");
    co_return 0;
}

Task<std::string> caught() {
    try {
        co_await throwing();
    } catch (const std::runtime_error& error) {
        co_return error.what();
    }
    co_return "nothing";
}

Task<Result<std::unique_ptr<int>>> half(int value) {
    if (value % 2 != 0) co_return fail(TextError{"odd"});
    co_return std::make_unique<int>(value / 2);
}

Task<Result<int>> quarter(int value) {
    CO_TRY(auto, first, co_await half(value));
    CO_TRY(auto, second, co_await half(*first));
    co_return *second;
}

struct Visit {
    std::thread::id before;
    std::thread::id inside;
    std::thread::id after;
};

Task<Visit> visit(Executor& other) {
    Visit visit;
    visit.before = std::this_thread::get_id();
    visit.inside = co_await runOn(other, [] { return std::this_thread::get_id(); });
    visit.after = std::this_thread::get_id();
    co_return visit;
}

TEST(Task, GivesItsValue) {
    ManualExecutor executor;
    EXPECT_EQ(executor.run(number(7)), 7);
}

TEST(Task, AHundredThousandNestedAwaitsCostNoStack) {
    ManualExecutor executor;
    EXPECT_EQ(executor.run(sumDown(100'000)), 5'000'050'000L);
}

TEST(Task, AnExceptionReachesTheAwaitingTask) {
    ManualExecutor executor;
    EXPECT_EQ(executor.run(caught()), "broken");
}

TEST(Task, ATaskThatNobodyAwaitsDoesNothingAndLeaksNothing) {
    auto task = number(7);
}

TEST(Task, TryPassesTheValueOrReturnsTheFailure) {
    ManualExecutor executor;
    EXPECT_EQ(executor.run(quarter(12)).value().value(), 3);
    EXPECT_EQ(executor.run(quarter(6)).value().error().popis().czech(), "odd");
}

TEST(Task, ResumesOnTheExecutorWhereItWasAwaited) {
    ThreadExecutor here("here");
    ThreadExecutor other("other");
    auto seen = await(here, visit(other));
    EXPECT_NE(seen.inside, seen.before);
    EXPECT_EQ(seen.after, seen.before);
}

} // namespace
} // namespace morvex
