#include "foundation/ThreadExecutor.h"

#include "platform/posix/base/Kernel.h"

#include <utility>

namespace morvex {

ThreadExecutor::ThreadExecutor(const std::string& name, unsigned threads) {
    for (unsigned i = 0; i < threads; ++i) threads_.emplace_back([this, name] { run(name); });
}

ThreadExecutor::~ThreadExecutor() {
    close();
}

void ThreadExecutor::post(Job job) {
    std::lock_guard lock(mutex_);
    if (closed_) return;
    jobs_.push_back(std::move(job));
    // Under the lock: as soon as the job has run, its owner may destroy this executor.
    wakeUp_.notify_one();
}

void ThreadExecutor::close() {
    std::deque<Job> dropped;
    {
        std::lock_guard lock(mutex_);
        closed_ = true;
        dropped.swap(jobs_);
    }
    wakeUp_.notify_all();
    for (auto& thread : threads_)
        if (thread.joinable()) thread.join();
}

void ThreadExecutor::run(const std::string& name) {
    kernel::nameThread(name);
    Running here(*this);
    std::unique_lock lock(mutex_);
    for (;;) {
        wakeUp_.wait(lock, [this] { return closed_ || !jobs_.empty(); });
        if (closed_) return;
        Job job = std::move(jobs_.front());
        jobs_.pop_front();
        lock.unlock();
        job();
        job = nullptr;
        lock.lock();
    }
}

} // namespace morvex
