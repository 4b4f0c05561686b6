#include "app/programs/ProcessRunner.h"

#include "app/programs/ProgramRun.h"
#include "foundation/Paths.h"
#include "foundation/ProgramLog.h"
#include "shared/wire/TalkSpanError.h"

#include <utility>

namespace morvex {

Task<Result<VysledekProcesu>> ProcessRunner::spustit(OutsideProgram program, Clock::Duration timeout,
                                                     NaRadek naRadek, Capture capture) {
    auto programRun = std::make_shared<ProgramRun>(clock_, SberVystupu(std::move(naRadek), capture));
    hold(programRun);
    auto started = programRun->spust(launcher_, program, timeout);
    if (!started) {
        hold(nullptr);
        logCause("starting a program", started.error());
        co_return fail(TalkSpanError{
            TalkSpanError::ToolFailed{paths::lastComponent(program.binary),
                                      "Nepodařilo se spustit: {duvod}"_sentence(started.error().popis())}});
    }
    auto vysledek = co_await programRun->vysledek();
    hold(nullptr);
    co_return vysledek;
}

bool ProcessRunner::zrusit() {
    auto programRun = held();
    return programRun && programRun->zrusit();
}

bool ProcessRunner::askToEnd() {
    auto programRun = held();
    return programRun && programRun->askToEnd();
}

std::shared_ptr<ProgramRun> ProcessRunner::held() {
    std::lock_guard lock(zamek_);
    return proces_;
}

void ProcessRunner::hold(std::shared_ptr<ProgramRun> programRun) {
    std::lock_guard lock(zamek_);
    proces_.swap(programRun);
}

} // namespace morvex
