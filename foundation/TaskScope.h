#pragma once

#include "foundation/Executor.h"
#include "foundation/OneShot.h"
#include "foundation/Task.h"

#include <memory>
#include <stop_token>
#include <vector>

namespace morvex {

/// The tasks that an owner has started and does not await. Belongs to one serial executor: `spawn`, `stop`
/// and `join` must be called there, and the tasks run there. The owner stops and joins the scope before it is
/// destroyed; destroying a scope with live tasks ends the process, since they would use a destroyed owner.
class TaskScope {
  public:
    explicit TaskScope(Executor& executor) : executor_(executor) {}

    ~TaskScope();
    TaskScope(const TaskScope&) = delete;
    TaskScope& operator=(const TaskScope&) = delete;

    /// Starts the task after the current job has ended. After `stop` it is not started at all.
    void spawn(Task<void> task);

    /// Tells the tasks that they should end.
    [[nodiscard]] std::stop_token token() const { return source_.get_token(); }

    void stop() { source_.request_stop(); }

    /// Resumes when no task is left.
    Task<void> join();

    [[nodiscard]] int live() const { return live_; }

  private:
    struct Root;
    static Root drive(TaskScope* scope, Task<void> task);
    void ended();

    Executor& executor_;
    std::stop_source source_;
    int live_ = 0;
    std::vector<std::shared_ptr<OneShot<bool>>> joiners_;
};

} // namespace morvex
