#pragma once

#include "foundation/Executor.h"

#include <condition_variable>
#include <deque>
#include <mutex>
#include <string>
#include <thread>
#include <vector>

namespace morvex {

/// An executor with threads of its own: one thread for a serial executor, several for work that blocks.
/// The destructor finishes the jobs that already run, drops the waiting ones and joins.
class ThreadExecutor final : public Executor {
  public:
    /// `name` is shown by debuggers (15 bytes at most).
    explicit ThreadExecutor(const std::string& name, unsigned threads = 1);
    ~ThreadExecutor() override;

    void post(Job job) override;

    /// Drops waiting jobs, refuses later ones and joins. Not from a job of its own.
    void close();

  private:
    void run(const std::string& name);

    std::mutex mutex_;
    std::condition_variable wakeUp_;
    std::deque<Job> jobs_;
    bool closed_ = false;
    std::vector<std::thread> threads_;
};

} // namespace morvex
