#include "app/execution/TerminalBridge.h"

#include "app/execution/TerminalGate.h"
#include "app/programs/ProcessRunner.h"
#include "foundation/Text.h"
#include "shared/base/Try.h"
#include "shared/wire/TalkSpanError.h"

#include <algorithm>

namespace morvex {

namespace {

constexpr std::chrono::seconds timeLimit{60};
constexpr std::size_t mostOutput = 6000;
constexpr std::size_t mostErrors = 2000;
/// Enough for the longest characters that people use; a bound for longer ones.
constexpr std::size_t bytesOfACharacter = 64;

} // namespace

Task<Result<TerminalBridge::Vysledek>>
TerminalBridge::spustitPrikaz(std::string program, std::vector<std::string> argumenty,
                              std::optional<std::string> slozka, AllowedNow povolene, std::stop_token stop) {
    CO_TRY(auto, name, TerminalGate::allowedProgram(program, argumenty));
    CO_CHECK(co_await checkPlaces(argumenty, slozka, povolene));
    auto found = co_await services_.discovery.najdiBinarku({name});
    if (!found) co_return fail(Chyba{Chyba::ZakazanyProgram{name}});
    auto environment = co_await services_.discovery.prostrediNastroju();
    // Checked again, because the first search for programs takes long enough for the user to remove a folder.
    CO_TRY(auto, cwd, co_await checkPlaces(argumenty, slozka, povolene));
    co_return co_await spust({.binary = std::move(found->binary),
                              .args = std::move(argumenty),
                              .cwd = std::move(cwd),
                              .env = std::move(environment)},
                             std::move(stop));
}

Task<Result<std::string>> TerminalBridge::checkPlaces(std::vector<std::string> argumenty,
                                                      std::optional<std::string> slozka,
                                                      AllowedNow povolene) {
    for (;;) {
        const auto slozky = povolene();
        CO_TRY(auto, cwd, TerminalGate::workingFolder(slozka, slozky));
        if (std::ranges::any_of(argumenty, TerminalGate::isPath))
            CO_CHECK(co_await runOn(services_.workers, [&argumenty, &slozky] {
                return TerminalGate::checkPaths(argumenty, slozky);
            }));
        if (povolene().slozky() == slozky.slozky()) co_return cwd;
    }
}

Task<Result<TerminalBridge::Vysledek>> TerminalBridge::spust(OutsideProgram program, std::stop_token stop) {
    if (stop.stop_requested()) co_return fail(TalkSpanError{TalkSpanError::Cancelled{}});
    ProcessRunner runner(services_.launcher, services_.clock);
    std::stop_callback cancel(stop, [&runner] { runner.zrusit(); });
    constexpr Capture capture{.vystup = mostOutput * bytesOfACharacter,
                              .chyby = mostErrors * bytesOfACharacter};
    CO_TRY(auto, result, co_await runner.spustit(std::move(program), timeLimit, {}, capture));
    co_return Vysledek{.vystup = firstCharacters(result.vystup, mostOutput),
                       .chyby = firstCharacters(result.chyby, mostErrors),
                       .status = result.navratovyKod};
}

} // namespace morvex
