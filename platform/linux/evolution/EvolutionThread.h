#pragma once

#include "foundation/Executor.h"
#include "platform/linux/evolution/EvolutionDesktop.h"

#include <functional>
#include <memory>

namespace morvex {

/// The thread of an `EvolutionDesktop`, with a main context of its own for its signals. Jobs run in order.
class EvolutionThread {
  public:
    using Work = std::move_only_function<void(EvolutionDesktop&)>;

    /// `changed` is called on the thread, also after this object was destroyed while a job blocked.
    EvolutionThread(std::shared_ptr<EvolutionRegistry> registry, std::function<void()> changed);

    ~EvolutionThread() { end(); }

    EvolutionThread(const EvolutionThread&) = delete;
    EvolutionThread& operator=(const EvolutionThread&) = delete;

    /// Cancels the job that runs and drops the others, also later ones. Waits for two seconds at most; a
    /// thread that still blocks then ends by itself later.
    void end();

    /// From any thread. `cancellable` is that of the job.
    void post(GCancellable* cancellable, Work work);

    /// From any thread; ends the job that has this one.
    void cancel(GCancellable* cancellable);

    /// Whether a job still runs a second after it was cancelled.
    [[nodiscard]] bool isStuck() const;

    /// Takes away what waits for a thread that is stuck, and lets it end alone.
    void giveUp(EvolutionThread& successor);

    /// How many threads of this process have been given up and still block.
    [[nodiscard]] static int givenUp();

  private:
    struct State;

    static void run(const std::shared_ptr<State>& state);

    std::shared_ptr<State> state_;
};

} // namespace morvex
