#pragma once

#include "foundation/Clock.h"

#include <functional>
#include <stop_token>
#include <utility>

namespace morvex {

/// A stop that is requested as soon as another one is, or when the time is up, while this object lives.
class LimitedStop {
  public:
    LimitedStop(Clock& clock, Clock::Duration limit, std::stop_token stop)
        : clock_(clock),
          timer_(clock.at(clock.sinceBoot() + limit, request())),
          other_(std::move(stop), request()) {}

    ~LimitedStop() { clock_.forget(timer_); }

    LimitedStop(const LimitedStop&) = delete;
    LimitedStop& operator=(const LimitedStop&) = delete;

    [[nodiscard]] std::stop_token token() const { return source_.get_token(); }

  private:
    std::function<void()> request() {
        return [source = source_]() mutable { source.request_stop(); };
    }

    std::stop_source source_;
    Clock& clock_;
    Clock::TimerId timer_;
    std::stop_callback<std::function<void()>> other_;
};

} // namespace morvex
