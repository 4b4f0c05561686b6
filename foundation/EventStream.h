#pragma once

#include "foundation/Executor.h"

#include <coroutine>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <utility>

namespace morvex {

/// An unbounded queue of events from any thread to one consumer.
template <class T> class EventStream {
  public:
    /// After `end()` the event is dropped.
    void push(T event) {
        std::unique_lock lock(mutex_);
        if (ended_) return;
        events_.push_back(std::move(event));
        wake(lock);
    }

    /// The consumer still gets what was pushed before, then nothing.
    void end() {
        std::unique_lock lock(mutex_);
        ended_ = true;
        wake(lock);
    }

    /// Drops the events that wait. Only while nobody consumes: a consumer would take it for the end.
    void clear() {
        std::deque<T> dropped;
        std::lock_guard lock(mutex_);
        dropped.swap(events_);
    }

    /// The next event; nothing once the stream has ended, or at once when `stop` is requested: then the
    /// events that wait stay in the stream for a later consumer. One consumer at a time, on a serial
    /// executor.
    auto next(std::stop_token stop = {}) { return Awaiter{*this, std::move(stop)}; }

  private:
    /// After so many events without a suspension the consumer lets other jobs of its executor run.
    static constexpr int eventsInARow = 256;

    class Awaiter {
      public:
        Awaiter(EventStream& stream, std::stop_token stop) : stream_(stream), stop_(std::move(stop)) {}

        bool await_ready() const noexcept { return false; }

        bool await_suspend(std::coroutine_handle<> handle) {
            Executor* home = Executor::current();
            {
                std::lock_guard lock(stream_.mutex_);
                if (stop_.stop_requested()) return false;
                bool ready = stream_.ended_ || !stream_.events_.empty();
                if (ready && (++stream_.inARow_ < eventsInARow || !home)) return false;
                stream_.inARow_ = 0;
                if (ready) {
                    home->post([handle] { handle.resume(); });
                    return true;
                }
                stream_.waiter_ = handle;
                stream_.home_ = home;
            }
            // The consumer's executor is serial: it cannot resume, and destroy this awaiter, before we
            // return.
            if (stop_.stop_possible()) onStop_.emplace(stop_, Wake{&stream_});
            return true;
        }

        std::optional<T> await_resume() {
            onStop_.reset();
            std::lock_guard lock(stream_.mutex_);
            if (stop_.stop_requested() || stream_.events_.empty()) return std::nullopt;
            std::optional<T> event(std::move(stream_.events_.front()));
            stream_.events_.pop_front();
            return event;
        }

      private:
        struct Wake {
            EventStream* stream;

            void operator()() const {
                std::unique_lock lock(stream->mutex_);
                stream->wake(lock);
            }
        };

        EventStream& stream_;
        std::stop_token stop_;
        std::optional<std::stop_callback<Wake>> onStop_;
    };

    void wake(std::unique_lock<std::mutex>& lock) {
        auto waiter = std::exchange(waiter_, {});
        Executor* home = home_;
        lock.unlock();
        if (!waiter) return;
        if (home)
            home->post([waiter] { waiter.resume(); });
        else
            waiter.resume();
    }

    std::mutex mutex_;
    std::deque<T> events_;
    std::coroutine_handle<> waiter_;
    Executor* home_ = nullptr;
    int inARow_ = 0;
    bool ended_ = false;
};

} // namespace morvex
