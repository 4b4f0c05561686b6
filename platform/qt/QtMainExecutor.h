#pragma once

#include "foundation/JobQueue.h"

#include <QObject>

#include <deque>
#include <mutex>

namespace morvex {

/// The main executor: runs jobs in the event loop of the thread that created it, the Qt main thread. Needs a
/// QCoreApplication. A job may run its own event loop; the following jobs then run there, in order. Created,
/// closed and destroyed on that thread; it must outlive every thread that posts to it.
class QtMainExecutor final : public Executor {
  public:
    ~QtMainExecutor() override;

    void post(Job job) override;

    /// Drops waiting jobs and refuses later ones.
    void close();

  private:
    /// Receives the wake-up events; after its destruction none arrives.
    class Target final : public QObject {
      public:
        explicit Target(QtMainExecutor& executor) : executor_(executor) {}

        void wake();
        bool event(QEvent* event) override;

      private:
        QtMainExecutor& executor_;
        std::mutex handOver_;
    };

    void runWaiting();

    JobQueue queue_;
    std::deque<Job> taken_; ///< main thread only
    Target target_{*this};
};

} // namespace morvex
