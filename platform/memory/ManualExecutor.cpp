#include "platform/memory/ManualExecutor.h"

namespace morvex {

namespace {

struct Root {
    struct promise_type {
        Root get_return_object() const noexcept { return {}; }

        std::suspend_never initial_suspend() const noexcept { return {}; }

        std::suspend_never final_suspend() const noexcept { return {}; }

        void return_void() const noexcept {}

        void unhandled_exception() const { throw; }
    };
};

Root drive(Task<void> task) {
    co_await std::move(task);
}

} // namespace

int ManualExecutor::runUntilIdle() {
    Running here(*this);
    int count = 0;
    for (auto jobs = queue_.takeAll(); !jobs.empty(); jobs = queue_.takeAll())
        for (auto& job : jobs) {
            std::exchange(job, nullptr)();
            ++count;
        }
    return count;
}

void ManualExecutor::start(Task<void> task) {
    post([task = std::move(task)]() mutable { drive(std::move(task)); });
}

} // namespace morvex
