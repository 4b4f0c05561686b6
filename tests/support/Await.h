#pragma once

#include "foundation/Executor.h"
#include "foundation/Task.h"
#include "shared/base/Require.h"

#include <chrono>
#include <future>
#include <memory>

namespace morvex {

namespace detail {

struct AwaitRoot {
    struct promise_type {
        AwaitRoot get_return_object() const noexcept { return {}; }

        std::suspend_never initial_suspend() const noexcept { return {}; }

        std::suspend_never final_suspend() const noexcept { return {}; }

        void return_void() const noexcept {}

        void unhandled_exception() const { throw; }
    };
};

template <class T> AwaitRoot driveAwait(Task<T> task, std::shared_ptr<std::promise<T>> promise) {
    if constexpr (std::is_void_v<T>) {
        co_await std::move(task);
        promise->set_value();
    } else {
        promise->set_value(co_await std::move(task));
    }
}

} // namespace detail

/// Runs a task on an executor with its own thread and blocks the test until it has ended. A task that takes
/// more than a minute hangs; the test program then ends, so that CI shows which test it was.
template <class T> T await(Executor& executor, Task<T> task) {
    auto promise = std::make_shared<std::promise<T>>();
    auto future = promise->get_future();
    executor.post(
        [task = std::move(task), promise]() mutable { detail::driveAwait(std::move(task), promise); });
    require(future.wait_for(std::chrono::minutes(1)) == std::future_status::ready, "a task did not end");
    return future.get();
}

} // namespace morvex
