#pragma once

#include "app/programs/SberVystupu.h"
#include "app/programs/VysledekProcesu.h"
#include "foundation/Clock.h"
#include "foundation/OneShot.h"
#include "platform/ports/ProcessLauncher.h"

#include <memory>
#include <mutex>

namespace morvex {

/// One run of a program, from its launch to its last output. Held by whoever awaits it and, once it is being
/// stopped, until the second stage has passed: the child is not reaped before, so that the group that is
/// killed is still its own.
class BehProgramu final : public ChildListener, public std::enable_shared_from_this<BehProgramu> {
  public:
    BehProgramu(Clock& clock, SberVystupu sber) : clock_(clock), sber_(std::move(sber)) {}

    /// The second stage of a stop comes at the latest now, as when the program ends before its time has come.
    ~BehProgramu() override;

    /// Once, before all else.
    Result<void> spust(ProcessLauncher& launcher, const OutsideProgram& program, Clock::Duration timeout);

    /// The end of a run that was launched, once. Awaited on an executor.
    Task<VysledekProcesu> vysledek();

    /// Asks the program to stop. False when it does not run. From any thread.
    bool zrusit();

    /// The same without the second stage and without a mark in the result.
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
