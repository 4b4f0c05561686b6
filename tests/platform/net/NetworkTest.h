#pragma once

#include "platform/ports/NetworkError.h"
#include "tests/support/Await.h"

#include <gtest/gtest.h>

#include <chrono>
#include <future>
#include <memory>
#include <string>
#include <utility>

namespace morvex {

/// Starts a task on an executor that has a thread of its own.
template <class T> std::future<T> start(Executor& executor, Task<T> task) {
    auto promise = std::make_shared<std::promise<T>>();
    auto future = promise->get_future();
    executor.post(
        [task = std::move(task), promise]() mutable { detail::driveAwait(std::move(task), promise); });
    return future;
}

/// What a started task came to.
template <class T> T end(std::future<T> future) {
    require(future.wait_for(std::chrono::minutes(1)) == std::future_status::ready, "a task did not end");
    return future.get();
}

template <class T> bool waits(const std::future<T>& future) {
    return future.wait_for(std::chrono::seconds(0)) == std::future_status::timeout;
}

/// The words of a network failure; a success and a failure of another kind break the test.
template <class T> std::string failureOf(const Result<T>& result) {
    if (result) {
        ADD_FAILURE() << "no failure";
        return {};
    }
    EXPECT_NE(result.error().template as<NetworkError>(), nullptr) << result.error().popis().czech();
    return result.error().popis().czech();
}

} // namespace morvex
