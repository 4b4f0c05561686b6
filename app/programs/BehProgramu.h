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
class BehProgramu final : public ChildListener, public std::enable_shared_from_this<BehProgramu> {
  public:
    BehProgramu(Clock& clock, SberVystupu sber) : clock_(clock), sber_(std::move(sber)) {}

    /// Runs the second stage of a stop if it is still due, for example because the program ended before its
    /// time.
    ~BehProgramu() override;

    /// Launches the program. Called once, before anything else.
    Result<void> spust(ProcessLauncher& launcher, const OutsideProgram& program, Clock::Duration timeout);

    /// Resumes at the end of a run that was launched. Called once, awaited on an executor.
    Task<VysledekProcesu> vysledek();

    /// Asks the program to stop. False if it is not running. From any thread.
    bool zrusit();

    /// Like `zrusit`, without the second stage and without a mark in the result.
    bool ukoncit();

  private:
    using Priznak = bool BehProgramu::*;
    enum class Zastaveni { zadne, prvniStupen, druhyStupen };

    void output(std::string_view chunk) override { sber_.pridejVystup(chunk); }

    void errors(std::string_view chunk) override { sber_.pridejChyby(chunk); }

    void exited(std::int32_t status) override;
    void ended() override;

    bool zastav(Priznak duvod);
    void zabij();

    Clock& clock_;
    SberVystupu sber_;
    OneShot<bool> konec_;
    Clock::TimerId limit_ = 0;
    Clock::TimerId dobeh_ = 0;

    std::mutex zamek_;
    std::unique_ptr<ChildProcess> child_;
    bool bezi_ = false;
    Zastaveni zastaveni_ = Zastaveni::zadne;
    bool zruseno_ = false;
    bool vyprselo_ = false;
    std::int32_t status_ = 0;
};

} // namespace morvex
