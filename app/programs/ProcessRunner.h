#pragma once

#include "app/programs/SberVystupu.h"
#include "app/programs/VysledekProcesu.h"
#include "foundation/Clock.h"
#include "foundation/Task.h"
#include "platform/ports/ProcessLauncher.h"

#include <memory>
#include <mutex>

namespace morvex {

class ProgramRun;

/// Starts an outside program and follows it to its end. Each run needs its own object, which lives until the
/// awaited run has ended. Every outside program on this computer's side is started through this class.
class ProcessRunner {
  public:
    ProcessRunner(ProcessLauncher& launcher, Clock& clock) : launcher_(launcher), clock_(clock) {}

    /// Awaited on an executor that outlives the clock. Only the launch can fail, with
    /// `TalkSpanError::ToolFailed`. After `timeout` the program is stopped in two stages, as by `zrusit`.
    /// When the program has ended, its output is awaited for up to two more seconds, in case a program that
    /// it started holds the pipes.
    Task<Result<VysledekProcesu>> spustit(OutsideProgram program, Clock::Duration timeout,
                                          NaRadek naRadek = {}, Capture capture = {});

    /// Asks the program and everything it has started to end, and kills what is left after four seconds.
    /// False if no program is running. From any thread.
    bool zrusit();

    /// Asks the program once to end: nothing is killed later, and the result does not mention it. False if no
    /// program is running. From any thread, also from within the line callback.
    bool askToEnd();

  private:
    void hold(std::shared_ptr<ProgramRun> programRun);
    std::shared_ptr<ProgramRun> held();

    ProcessLauncher& launcher_;
    Clock& clock_;
    std::mutex zamek_;
    std::shared_ptr<ProgramRun> proces_;
};

} // namespace morvex
