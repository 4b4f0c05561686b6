#pragma once

#include "app/programs/SberVystupu.h"
#include "app/programs/VysledekProcesu.h"
#include "foundation/Clock.h"
#include "foundation/Task.h"
#include "platform/ports/ProcessLauncher.h"

#include <memory>
#include <mutex>

namespace morvex {

class BehProgramu;

/// Starts an outside program and follows it to its end; one object a run. Every outside program of this
/// computer's side goes through here. The object lives until the awaited run has ended.
class ProcessRunner {
  public:
    ProcessRunner(ProcessLauncher& launcher, Clock& clock) : launcher_(launcher), clock_(clock) {}

    /// Awaited on an executor that outlives the clock. Only the launch can fail, with
    /// `TalkSpanError::ToolFailed`. After `timeout` the program is stopped in two stages, as by `zrusit`.
    /// Once it has ended its output is awaited for two seconds more, should a program that it has started
    /// hold the pipes.
    Task<Result<VysledekProcesu>> spustit(OutsideProgram program, Clock::Duration timeout,
                                          NaRadek naRadek = {}, Zachyt zachyt = {});

    /// Asks the program and all that it has started to end and kills what is left of them after four seconds.
    /// False when no program runs. From any thread.
    bool zrusit();

    /// Asks once, politely: nothing is killed later, and the result does not tell of it. Else as `zrusit`,
    /// also from within the line callback.
    bool ukoncit();

  private:
    void drz(std::shared_ptr<BehProgramu> beh);
    std::shared_ptr<BehProgramu> drzeny();

    ProcessLauncher& launcher_;
    Clock& clock_;
    std::mutex zamek_;
    std::shared_ptr<BehProgramu> proces_;
};

} // namespace morvex
