#include "app/programs/ProcessRunner.h"

#include "app/programs/BehProgramu.h"
#include "foundation/Paths.h"
#include "foundation/ProgramLog.h"
#include "shared/wire/TalkSpanError.h"

#include <utility>

namespace morvex {

Task<Result<VysledekProcesu>> ProcessRunner::spustit(OutsideProgram program, Clock::Duration timeout,
                                                     NaRadek naRadek, Zachyt zachyt) {
    auto beh = std::make_shared<BehProgramu>(clock_, SberVystupu(std::move(naRadek), zachyt));
    drz(beh);
    auto spusteno = beh->spust(launcher_, program, timeout);
    if (!spusteno) {
        drz(nullptr);
        logCause("starting a program", spusteno.error());
        co_return fail(TalkSpanError{
            TalkSpanError::ToolFailed{paths::lastComponent(program.binary),
                                      "Nepodařilo se spustit: {duvod}"_sentence(spusteno.error().popis())}});
    }
    auto vysledek = co_await beh->vysledek();
    drz(nullptr);
    co_return vysledek;
}

bool ProcessRunner::zrusit() {
    auto beh = drzeny();
    return beh && beh->zrusit();
}

bool ProcessRunner::ukoncit() {
    auto beh = drzeny();
    return beh && beh->ukoncit();
}

std::shared_ptr<BehProgramu> ProcessRunner::drzeny() {
    std::lock_guard lock(zamek_);
    return proces_;
}

void ProcessRunner::drz(std::shared_ptr<BehProgramu> beh) {
    std::lock_guard lock(zamek_);
    proces_.swap(beh);
}

} // namespace morvex
