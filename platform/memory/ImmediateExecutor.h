#pragma once

#include "foundation/JobQueue.h"

#include <utility>

namespace morvex {

/// An executor for what a test does not want to wait for: a job runs before `post` returns, unless another
/// one of this executor runs, and then behind that. On the test's own thread.
class ImmediateExecutor final : public Executor {
  public:
    void post(Job job) override {
        queue_.push(std::move(job));
        if (isCurrent()) return;
        Running here(*this);
        for (auto jobs = queue_.takeAll(); !jobs.empty(); jobs = queue_.takeAll())
            for (auto& waiting : jobs) std::exchange(waiting, nullptr)();
    }

  private:
    JobQueue queue_;
};

} // namespace morvex
