#pragma once

#include "app/organizer/PersonalServiceError.h"
#include "foundation/Clock.h"
#include "foundation/EitherStop.h"
#include "foundation/LimitedStop.h"
#include "foundation/Task.h"
#include "shared/base/Error.h"

#include <chrono>
#include <stop_token>
#include <type_traits>
#include <utility>

namespace morvex {

/// Bounds what one call of a tool waits for, however many questions to the system it takes.
class CallLimit {
  public:
    static constexpr std::chrono::seconds longest{15};

    /// `ending`: the program ends. The clock outlives this object.
    CallLimit(Clock& clock, std::stop_token ending) : clock_(clock), ending_(std::move(ending)) {}

    /// Runs `operation`, a plain function that gives the task of a token. The task ends when `stop` is
    /// requested, the program ends or the time is up; a failure behind that time is `noAnswer`.
    template <class Operation>
    std::invoke_result_t<Operation&, std::stop_token> run(std::stop_token stop, Operation operation) const {
        const EitherStop ended(std::move(stop), ending_);
        const LimitedStop limited(clock_, longest, ended.token());
        auto result = co_await operation(limited.token());
        if (!result && limited.token().stop_requested() && !ended.token().stop_requested())
            co_return fail(PersonalServiceError{PersonalServiceError::Case::noAnswer});
        co_return result;
    }

  private:
    Clock& clock_;
    std::stop_token ending_;
};

} // namespace morvex
