#pragma once

#include "tests/app/programs/RealPrograms.h"
#include "tests/fault/DifficultChildren.h"

#include <atomic>
#include <cstddef>
#include <future>
#include <optional>

namespace morvex {

/// One run of a difficult child, with the ways to trouble it. Use on the test's thread.
class TroubledRun {
  public:
    TroubledRun(RealPrograms& programs, const DifficultChild& child);

    void cancel();
    void askToEnd();

    [[nodiscard]] bool hasEnded() const;

    /// Call once; waits for the end if necessary. The functions below have results only afterwards.
    void expectItsEnd();

    [[nodiscard]] bool neverBegan() const { return !result_; }

    [[nodiscard]] bool wasAsked() const { return asked_; }

    [[nodiscard]] bool wasCancelled() const { return result_ && result_->zruseno; }

    [[nodiscard]] bool wasOutOfTime() const { return result_ && result_->vyprselCas; }

    [[nodiscard]] bool wasStopped() const { return wasCancelled() || wasOutOfTime(); }

    /// Whether the second stage of a stop killed it.
    [[nodiscard]] bool wasKilled() const;

    [[nodiscard]] bool endedByItself() const { return result_ && !wasStopped() && !asked_; }

    /// Whether processes of it may live on.
    [[nodiscard]] bool mayLeave() const;

    /// Call long after the end.
    void expectNoLateCallback() const;

    [[nodiscard]] const DifficultChild& child() const { return child_; }

  private:
    DifficultChild child_;
    ProcessRunner runner_;
    std::atomic<std::size_t> lines_ = 0;
    std::size_t linesAtTheEnd_ = 0;
    bool cancelled_ = false;
    bool asked_ = false;
    std::optional<VysledekProcesu> result_;
    std::future<Result<VysledekProcesu>> end_;
};

} // namespace morvex
