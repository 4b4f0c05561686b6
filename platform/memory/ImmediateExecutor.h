#pragma once

#include "foundation/JobQueue.h"

#include <utility>

namespace morvex {

/// For tests that do not want to wait: a job runs within `post`, on the calling thread. A job posted by a
/// running job of this executor runs after that job.
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
