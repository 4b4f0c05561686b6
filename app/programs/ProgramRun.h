#pragma once

#include "app/programs/SberVystupu.h"
#include "app/programs/VysledekProcesu.h"
#include "foundation/Clock.h"
#include "foundation/OneShot.h"
#include "platform/ports/ProcessLauncher.h"

#include <memory>
#include <mutex>

namespace morvex {

/// One run of a program, from its launch to its last output. Whoever awaits the run holds it, and a run that
/// is being stopped holds itself until the second stage. The child is not reaped before that, so the process
/// group that is killed is still its own.
class ProgramRun final : public ChildListener, public std::enable_shared_from_this<ProgramRun> {
  public:
    ProgramRun(Clock& clock, SberVystupu collector) : clock_(clock), collector_(std::move(collector)) {}

    /// Runs the second stage of a stop if it is still due, for example because the program ended before its
    /// time.
    ~ProgramRun() override;

    /// Launches the program. Called once, before anything else.
    Result<void> spust(ProcessLauncher& launcher, const OutsideProgram& program, Clock::Duration timeout);

    /// Resumes at the end of a run that was launched. Called once, awaited on an executor.
    Task<VysledekProcesu> vysledek();

    /// Asks the program to stop. False if it is not running. From any thread.
    bool zrusit();

    /// Like `zrusit`, without the second stage and without a mark in the result.
    bool askToEnd();

  private:
    using Flag = bool ProgramRun::*;
    enum class StopStage { none, firstStage, secondStage };

    void output(std::string_view chunk) override { collector_.addOutput(chunk); }

    void errors(std::string_view chunk) override { collector_.addErrors(chunk); }

    void exited(std::int32_t status) override;
    void ended() override;

    bool stopFor(Flag duvod);
    void killAll();

    Clock& clock_;
    SberVystupu collector_;
    OneShot<bool> ended_;
    Clock::TimerId limit_ = 0;
    Clock::TimerId drainTimer_ = 0;

    std::mutex zamek_;
    std::unique_ptr<ChildProcess> child_;
    bool bezi_ = false;
    StopStage stopStage_ = StopStage::none;
    bool zruseno_ = false;
    bool vyprselo_ = false;
    std::int32_t status_ = 0;
};

} // namespace morvex
