#pragma once

#include "foundation/Executor.h"

#include <coroutine>
#include <exception>
#include <optional>
#include <type_traits>
#include <utility>

namespace morvex {

/// An asynchronous operation that starts when it is awaited and ends with a value. The awaiting coroutine
/// resumes on the executor on which it awaited, wherever the operation ended. Nested awaits use symmetric
/// transfer, so their depth uses no stack. A task that nobody awaits does nothing.
///
/// Coroutine parameters must be taken by value, and a capturing lambda must not be a coroutine: its closure
/// is destroyed at the first suspension.
template <class T> class [[nodiscard]] Task {
  public:
    class promise_type;
    using Handle = std::coroutine_handle<promise_type>;

    Task(Task&& other) noexcept : handle_(std::exchange(other.handle_, {})) {}

    Task& operator=(Task&& other) noexcept {
        std::swap(handle_, other.handle_);
        return *this;
    }

    ~Task() {
        if (handle_) handle_.destroy();
    }

    auto operator co_await() && noexcept {
        struct Awaiter {
            Handle handle;

            bool await_ready() const noexcept { return false; }

            std::coroutine_handle<> await_suspend(std::coroutine_handle<> continuation) noexcept {
                handle.promise().continuation = continuation;
                handle.promise().home = Executor::current();
                return handle;
            }

            T await_resume() { return handle.promise().take(); }
        };

        return Awaiter{handle_};
    }

  private:
    explicit Task(Handle handle) : handle_(handle) {}

    Handle handle_;
};

namespace detail {

/// Resumes the awaiting coroutine on the executor where it awaited.
struct FinalAwaiter {
    bool await_ready() const noexcept { return false; }

    template <class Promise>
    std::coroutine_handle<> await_suspend(std::coroutine_handle<Promise> ended) const noexcept {
        std::coroutine_handle<> continuation = ended.promise().continuation;
        Executor* home = ended.promise().home;
        if (home == nullptr || home->isCurrent()) return continuation;
        // From here on another thread may destroy the ended coroutine.
        resumeOn(home, continuation);
        return std::noop_coroutine();
    }

    void await_resume() const noexcept {}
};

struct TaskPromiseBase {
    std::coroutine_handle<> continuation;
    Executor* home = nullptr;
    std::exception_ptr exception;

    std::suspend_always initial_suspend() const noexcept { return {}; }

    FinalAwaiter final_suspend() const noexcept { return {}; }

    void unhandled_exception() noexcept { exception = std::current_exception(); }
};

} // namespace detail

template <class T> class Task<T>::promise_type : public detail::TaskPromiseBase {
  public:
    Task get_return_object() { return Task(Handle::from_promise(*this)); }

    template <class Value>
        requires std::is_constructible_v<T, Value&&>
    void return_value(Value&& value) {
        value_.emplace(std::forward<Value>(value));
    }

    T take() {
        if (exception) std::rethrow_exception(exception);
        return std::move(*value_);
    }

  private:
    std::optional<T> value_;
};

template <> class Task<void>::promise_type : public detail::TaskPromiseBase {
  public:
    Task get_return_object() { return Task(Handle::from_promise(*this)); }

    void return_void() const noexcept {}

    void take() const {
        if (exception) std::rethrow_exception(exception);
    }
};

/// `co_await hop(executor)`: continues this coroutine on `executor`.
inline auto hop(Executor& executor) {
    struct Awaiter {
        Executor& target;

        bool await_ready() const noexcept { return target.isCurrent(); }

        void await_suspend(std::coroutine_handle<> handle) const { resumeOn(&target, handle); }

        void await_resume() const noexcept {}
    };

    return Awaiter{executor};
}

/// `co_await letOthersRun()`: continues after the jobs that already wait on this executor.
inline auto letOthersRun() {
    struct Awaiter {
        bool await_ready() const noexcept { return false; }

        void await_suspend(std::coroutine_handle<> handle) const { resumeOn(Executor::current(), handle); }

        void await_resume() const noexcept {}
    };

    return Awaiter{};
}

/// Runs a plain function on another executor, where it may block, and resumes here with its result.
template <class Work> Task<std::invoke_result_t<Work&>> runOn(Executor& executor, Work work) {
    co_await hop(executor);
    co_return work();
}

} // namespace morvex
