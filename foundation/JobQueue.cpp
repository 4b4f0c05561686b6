#include "foundation/JobQueue.h"

#include <utility>

namespace morvex {

bool JobQueue::push(Job job) {
    std::lock_guard lock(mutex_);
    if (closed_) return false;
    jobs_.push_back(std::move(job));
    return jobs_.size() == 1;
}

std::vector<Job> JobQueue::takeAll() {
    std::lock_guard lock(mutex_);
    return std::exchange(jobs_, {});
}

void JobQueue::close() {
    // The jobs are destroyed outside the lock, since a destructor may post.
    std::vector<Job> dropped;
    {
        std::lock_guard lock(mutex_);
        closed_ = true;
        dropped.swap(jobs_);
    }
}

} // namespace morvex
