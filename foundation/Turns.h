#pragma once

#include "foundation/OneShot.h"
#include "foundation/Task.h"

#include <deque>
#include <memory>
#include <utility>

namespace morvex {

/// Lets coroutines through one at a time, in order of arrival. Belongs to one serial executor and must
/// outlive the waiting coroutines.
class Turns {
  public:
    /// Holds the turn until it is destroyed.
    class Turn {
      public:
        explicit Turn(Turns& turns) : turns_(&turns) {}

        Turn(Turn&& other) noexcept : turns_(std::exchange(other.turns_, nullptr)) {}

        Turn& operator=(Turn&&) = delete;

        ~Turn() {
            if (turns_) turns_->next();
        }

      private:
        Turns* turns_;
    };

    Turns() = default;
    Turns(const Turns&) = delete;
    Turns& operator=(const Turns&) = delete;

    Task<Turn> take() {
        if (std::exchange(isTaken_, true)) {
            auto shot = std::make_shared<OneShot<bool>>();
            waiting_.push_back(shot);
            co_await shot->wait();
        }
        co_return Turn(*this);
    }

    [[nodiscard]] bool isTaken() const { return isTaken_; }

  private:
    void next() {
        if (waiting_.empty()) {
            isTaken_ = false;
            return;
        }
        auto shot = std::move(waiting_.front());
        waiting_.pop_front();
        shot->answer(true);
    }

    bool isTaken_ = false;
    std::deque<std::shared_ptr<OneShot<bool>>> waiting_;
};

} // namespace morvex
