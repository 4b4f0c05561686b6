#pragma once

#include "foundation/Executor.h"

#include <mutex>
#include <vector>

namespace morvex {

/// The jobs that wait for an executor: filled by any thread, emptied in batches by the executor's own.
class JobQueue {
  public:
    /// Returns true if the queue was empty, so that the executor has to be woken only once per batch.
    bool push(Job job);

    /// All waiting jobs, in order.
    std::vector<Job> takeAll();

    /// Refuses all later jobs and destroys the waiting ones.
    void close();

  private:
    std::mutex mutex_;
    std::vector<Job> jobs_;
    bool closed_ = false;
};

} // namespace morvex
