#pragma once

#include "foundation/Executor.h"

#include <mutex>
#include <vector>

namespace morvex {

/// The jobs that wait for an executor: filled by any thread, emptied in batches by the executor's own.
class JobQueue {
  public:
    /// True when the queue was empty, so that the executor has to be woken: one wake-up a batch.
    bool push(Job job);

    /// All jobs that wait now, in order.
    std::vector<Job> takeAll();

    /// Refuses all later jobs and destroys those that wait.
    void close();

  private:
    std::mutex mutex_;
    std::vector<Job> jobs_;
    bool closed_ = false;
};

} // namespace morvex
