#pragma once

#include <coroutine>
#include <functional>

namespace morvex {

using Job = std::move_only_function<void()>;

/// Runs jobs in the order in which they were posted. Coroutines resume on the executor on which they were
/// suspended.
class Executor {
  public:
    Executor() = default;
    Executor(const Executor&) = delete;
    Executor& operator=(const Executor&) = delete;
    virtual ~Executor() = default;

    /// From any thread. After the executor was closed the job is destroyed unrun.
    virtual void post(Job job) = 0;

    /// The executor whose job runs on this thread, or null.
    static Executor* current();

    [[nodiscard]] bool isCurrent() const { return current() == this; }

  protected:
    /// While it lives, marks this thread as running jobs of `executor`.
    class Running {
      public:
        explicit Running(Executor& executor);
        ~Running();
        Running(const Running&) = delete;
        Running& operator=(const Running&) = delete;

      private:
        Executor* previous_;
    };
};

/// Resumes a coroutine on its executor, or directly if it has none.
inline void resumeOn(Executor* home, std::coroutine_handle<> waiting) {
    if (home)
        home->post([waiting] { waiting.resume(); });
    else
        waiting.resume();
}

} // namespace morvex
