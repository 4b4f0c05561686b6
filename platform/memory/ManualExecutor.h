#pragma once

#include "foundation/JobQueue.h"
#include "foundation/Task.h"

#include <memory>
#include <optional>
#include <utility>

namespace morvex {

/// An executor that a test drives by hand, on the test's own thread.
class ManualExecutor final : public Executor {
  public:
    void post(Job job) override { queue_.push(std::move(job)); }

    /// Runs jobs until none is left. Returns their number.
    int runUntilIdle();

    /// Runs a task as far as possible without outside events. Returns its value, or nothing if it still
    /// waits; it then continues in later calls of `runUntilIdle`.
    template <class T> std::optional<T> run(Task<T> task) {
        auto result = std::make_shared<std::optional<T>>();
        start(store(std::move(task), result));
        runUntilIdle();
        return std::move(*result);
    }

    /// Returns whether the task has ended.
    bool run(Task<void> task) {
        auto ended = std::make_shared<bool>(false);
        start(note(std::move(task), ended));
        runUntilIdle();
        return *ended;
    }

    /// Starts a task without reporting its end.
    void start(Task<void> task);

  private:
    template <class T> static Task<void> store(Task<T> task, std::shared_ptr<std::optional<T>> result) {
        result->emplace(co_await std::move(task));
    }

    static Task<void> note(Task<void> task, std::shared_ptr<bool> ended) {
        co_await std::move(task);
        *ended = true;
    }

    JobQueue queue_;
};

} // namespace morvex
