#pragma once

#include "foundation/Executor.h"
#include "shared/base/Error.h"
#include "shared/base/Sentence.h"

#include <coroutine>
#include <memory>
#include <mutex>
#include <optional>
#include <utility>

namespace morvex {

/// A value that arrives once, from any thread, for one waiting coroutine. The first answer counts.
template <class T> class OneShot {
  public:
    /// Returns false, and changes nothing, if there already was an answer.
    bool answer(T value) {
        std::unique_lock lock(mutex_);
        if (answered_) return false;
        answered_ = true;
        value_.emplace(std::move(value));
        auto waiter = std::exchange(waiter_, {});
        Executor* home = home_;
        lock.unlock();
        if (waiter) resumeOn(home, waiter);
        return true;
    }

    /// Use as `co_await oneShot->wait()`, only once. The awaiting coroutine must keep the object alive.
    auto wait() {
        struct Awaiter {
            OneShot& shot;

            bool await_ready() const noexcept { return false; }

            bool await_suspend(std::coroutine_handle<> handle) {
                std::lock_guard lock(shot.mutex_);
                if (shot.answered_) return false;
                shot.waiter_ = handle;
                shot.home_ = Executor::current();
                return true;
            }

            T await_resume() { return std::move(*shot.value_); }
        };

        return Awaiter{*this};
    }

  private:
    std::mutex mutex_;
    std::optional<T> value_;
    std::coroutine_handle<> waiter_;
    Executor* home_ = nullptr;
    bool answered_ = false;
};

/// The error of a call whose answering side was destroyed before it answered.
struct Abandoned {
    [[nodiscard]] Sentence popis() const { return "Operace skončila dřív, než dala výsledek."_sentence; }

    bool operator==(const Abandoned&) const = default;
};

/// The answering end of a call to another thread. Dropped without an answer it answers `Abandoned`, so that a
/// call lost in a shutdown still resumes its caller.
template <class T> class Reply {
  public:
    explicit Reply(std::shared_ptr<OneShot<Result<T>>> shot) : shot_(std::move(shot)) {}

    Reply(Reply&&) noexcept = default;
    Reply& operator=(Reply&&) noexcept = default;

    ~Reply() {
        if (shot_) shot_->answer(fail(Abandoned{}));
    }

    void operator()(Result<T> result) {
        if (auto shot = std::exchange(shot_, nullptr)) shot->answer(std::move(result));
    }

  private:
    std::shared_ptr<OneShot<Result<T>>> shot_;
};

} // namespace morvex
