#include "tests/fault/TroubledRun.h"

#include <gtest/gtest.h>

#include <csignal>

namespace morvex {

using namespace std::chrono_literals;

TroubledRun::TroubledRun(RealPrograms& programs, const DifficultChild& child)
    : child_(child),
      runner_(programs.launcher, programs.clock),
      end_(std::async(std::launch::async, [this, &programs] {
          auto result = await(programs.home, runner_.spustit(child_.program, RealPrograms::limit,
                                                             [this](std::string_view) { ++lines_; }));
          linesAtTheEnd_ = lines_;
          return result;
      })) {}

void TroubledRun::cancel() {
    if (runner_.zrusit()) cancelled_ = true;
}

void TroubledRun::askToEnd() {
    if (runner_.askToEnd()) asked_ = true;
}

bool TroubledRun::hasEnded() const {
    return end_.wait_for(2ms) == std::future_status::ready;
}

void TroubledRun::expectItsEnd() {
    using Ends = DifficultChild::Ends;
    SCOPED_TRACE(child_.what);
    auto result = end_.get();
    EXPECT_EQ(result.has_value(), child_.ends != Ends::neverBegins);
    if (!result) return;
    result_ = *std::move(result);
    EXPECT_EQ(wasCancelled(), cancelled_);
    if (!endedByItself()) return;
    EXPECT_EQ(child_.ends, Ends::byItself);
    EXPECT_EQ(result_->navratovyKod, child_.status);
}

bool TroubledRun::wasKilled() const {
    return wasStopped() && result_->navratovyKod == SIGKILL;
}

bool TroubledRun::mayLeave() const {
    using enum DifficultChild::Leaves;
    return child_.leaves == daemons || (child_.leaves == unlessStopped && (asked_ || !wasStopped()));
}

void TroubledRun::expectNoLateCallback() const {
    EXPECT_EQ(lines_, linesAtTheEnd_) << child_.what;
}

} // namespace morvex
