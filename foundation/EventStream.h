#pragma once

#include "foundation/Executor.h"

#include <coroutine>
#include <cstddef>
#include <deque>
#include <memory>
#include <mutex>
#include <optional>
#include <stop_token>
#include <utility>

namespace morvex {

/// A queue of events from any thread to one consumer. It accepts everything that is pushed. A producer driven
/// by outside data gives its events weights and awaits `room` before it reads more.
template <class T> class EventStream {
  public:
    /// After `end()` events are dropped.
    void push(T event, std::size_t weight = 1) {
        std::unique_lock lock(mutex_);
        if (ended_) return;
        events_.push_back({std::move(event), weight});
        weight_ += weight;
        consumer_.wake(lock);
    }

    /// The consumer still gets the events pushed before, then nothing.
    void end() {
        std::unique_lock lock(mutex_);
        ended_ = true;
        consumer_.wake(lock);
        lock.lock();
        producer_.wake(lock);
    }

    /// Drops the waiting events. Call only while nobody consumes, since a consumer would take it for the end.
    void clear() {
        std::deque<Waiting> dropped;
        std::unique_lock lock(mutex_);
        dropped.swap(events_);
        for (const auto& waiting : dropped) weight_ -= waiting.weight;
        producer_.wake(lock);
    }

    /// An event whose weight counts until this object is destroyed. It must not outlive the stream.
    class Held;

    /// The next event; nothing when the stream has ended. Returns nothing at once when `stop` is requested;
    /// waiting events then stay in the stream for a later consumer. One consumer at a time, on a serial
    /// executor.
    auto next(std::stop_token stop = {}) { return Next{*this, std::move(stop)}; }

    /// Like `next`, for a consumer that sets events aside: `room` keeps counting them while they are held.
    auto nextHeld(std::stop_token stop) { return NextHeld{*this, std::move(stop)}; }

    /// Resumes as soon as the events that wait or are held weigh less than `most`, the stream has ended, or
    /// `stop` is requested. One producer at a time, on a serial executor.
    auto room(std::size_t most, std::stop_token stop) { return Room{*this, most, std::move(stop)}; }

  private:
    /// After this many events without a suspension the consumer lets other jobs of its executor run.
    static constexpr int eventsInARow = 256;

    struct Waiting {
        T event;
        std::size_t weight;
    };

    /// A coroutine that waits for the other end of the stream. Guarded by the stream's lock.
    struct Waiter {
        std::coroutine_handle<> handle;
        Executor* home = nullptr;

        void wait(std::coroutine_handle<> coroutine, Executor* executor) {
            handle = coroutine;
            home = executor;
        }

        /// Releases the lock.
        void wake(std::unique_lock<std::mutex>& lock) {
            auto waiting = std::exchange(handle, {});
            auto* executor = home;
            lock.unlock();
            if (waiting) resumeOn(executor, waiting);
        }
    };

    /// Wakes one end when a stop is requested.
    struct Wake {
        EventStream* stream;
        Waiter EventStream::* end;

        void operator()() const {
            std::unique_lock lock(stream->mutex_);
            (stream->*end).wake(lock);
        }
    };

    class Next {
      public:
        Next(EventStream& stream, std::stop_token stop) : stream_(stream), stop_(std::move(stop)) {}

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
                    resumeOn(home, handle);
                    return true;
                }
                stream_.consumer_.wait(handle, home);
            }
            // The consumer's executor is serial, so the coroutine cannot resume and destroy this awaiter
            // before we return.
            if (stop_.stop_possible()) onStop_.emplace(stop_, Wake{&stream_, &EventStream::consumer_});
            return true;
        }

        std::optional<T> await_resume() {
            auto taken = take();
            if (!taken) return std::nullopt;
            stream_.lighten(taken->weight);
            return std::move(taken->event);
        }

      protected:
        std::optional<Waiting> take() {
            onStop_.reset();
            std::lock_guard lock(stream_.mutex_);
            if (stop_.stop_requested() || stream_.events_.empty()) return std::nullopt;
            std::optional<Waiting> taken(std::move(stream_.events_.front()));
            stream_.events_.pop_front();
            return taken;
        }

        EventStream& stream_;

      private:
        std::stop_token stop_;
        std::optional<std::stop_callback<Wake>> onStop_;
    };

    class NextHeld : public Next {
      public:
        using Next::Next;

        std::optional<Held> await_resume() {
            auto taken = this->take();
            if (!taken) return std::nullopt;
            return Held{this->stream_, std::move(taken->event), taken->weight};
        }
    };

    class Room {
      public:
        Room(EventStream& stream, std::size_t most, std::stop_token stop)
            : stream_(stream), most_(most), stop_(std::move(stop)) {}

        bool await_ready() const noexcept { return false; }

        bool await_suspend(std::coroutine_handle<> handle) {
            {
                std::lock_guard lock(stream_.mutex_);
                if (stop_.stop_requested() || stream_.ended_ || stream_.weight_ < most_) return false;
                stream_.most_ = most_;
                stream_.producer_.wait(handle, Executor::current());
            }
            // See the consumer's `await_suspend`.
            if (stop_.stop_possible()) onStop_.emplace(stop_, Wake{&stream_, &EventStream::producer_});
            return true;
        }

        void await_resume() { onStop_.reset(); }

      private:
        EventStream& stream_;
        std::size_t most_;
        std::stop_token stop_;
        std::optional<std::stop_callback<Wake>> onStop_;
    };

    void lighten(std::size_t weight) {
        std::unique_lock lock(mutex_);
        weight_ -= weight;
        if (weight_ < most_) producer_.wake(lock);
    }

    std::mutex mutex_;
    std::deque<Waiting> events_;
    std::size_t weight_ = 0; ///< of all waiting and held events
    Waiter consumer_;
    Waiter producer_;
    std::size_t most_ = 0; ///< the limit below which the producer resumes
    int inARow_ = 0;
    bool ended_ = false;
};

template <class T> class EventStream<T>::Held {
  public:
    Held(EventStream& stream, T event, std::size_t weight)
        : event(std::move(event)), stream_(&stream), weight_(weight) {}

    Held(Held&& other) noexcept
        : event(std::move(other.event)),
          stream_(std::exchange(other.stream_, nullptr)),
          weight_(other.weight_) {}

    Held& operator=(Held&&) = delete;

    ~Held() {
        if (stream_) stream_->lighten(weight_);
    }

    T event;

  private:
    EventStream* stream_;
    std::size_t weight_;
};

} // namespace morvex
