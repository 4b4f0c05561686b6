#include "foundation/TaskScope.h"

#include "shared/base/Require.h"

#include <utility>

namespace morvex {

/// A coroutine that nobody awaits and that frees itself when it ends.
struct TaskScope::Root {
    struct promise_type {
        Root get_return_object() const noexcept { return {}; }

        std::suspend_never initial_suspend() const noexcept { return {}; }

        std::suspend_never final_suspend() const noexcept { return {}; }

        void return_void() const noexcept {}

        void unhandled_exception() const { require(false, "an exception escaped a task of a scope"); }
    };
};

TaskScope::~TaskScope() {
    require(live_ == 0, "a task scope was destroyed before its tasks ended");
}

void TaskScope::spawn(Task<void> task) {
    if (source_.stop_requested()) return;
    ++live_;
    executor_.post([this, task = std::move(task)]() mutable { drive(this, std::move(task)); });
}

TaskScope::Root TaskScope::drive(TaskScope* scope, Task<void> task) {
    {
        Task<void> running = std::move(task);
        co_await std::move(running);
    }
    scope->ended();
}

void TaskScope::ended() {
    if (--live_ > 0) return;
    for (auto& joiner : std::exchange(joiners_, {})) joiner->answer(true);
}

Task<void> TaskScope::join() {
    while (live_ > 0) {
        auto joiner = std::make_shared<OneShot<bool>>();
        joiners_.push_back(joiner);
        co_await joiner->wait();
    }
}

} // namespace morvex
