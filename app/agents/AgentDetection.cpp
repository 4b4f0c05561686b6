#include "app/agents/AgentDetection.h"

#include "app/programs/ProcessRunner.h"
#include "foundation/Printable.h"
#include "foundation/Text.h"

#include <algorithm>
#include <ranges>
#include <utility>

namespace morvex {

namespace {

constexpr std::chrono::seconds versionLimit{15};
constexpr Capture capture{.vystup = 64UL * 1024, .chyby = 64UL * 1024};

/// Limits a version, because every status contains it.
constexpr std::size_t longestVersion = 200;

/// The first line that is not blank, trimmed; empty if all lines are blank.
std::optional<std::string> versionIn(std::string_view text) {
    auto line = firstLine(text);
    return line.empty() ? std::nullopt : std::optional(printableLine(excerpt(line, longestVersion)));
}

} // namespace

Task<AgentStatus> AgentDetection::zjisti(std::shared_ptr<const AgentAdapter> adapter,
                                         std::stop_token cancellation) {
    AgentStatus status;
    auto found = co_await discovery_.najdiBinarku(adapter->jmenaBinarky());
    if (!found) {
        status.problem = co_await notFoundText(adapter);
        co_return status;
    }
    status.installed = true;
    status.source = found->directory;
    OutsideProgram program{.binary = found->binary,
                           .args = {"--version"},
                           .cwd = {},
                           .env = co_await discovery_.prostrediNastroju()};
    status.version = co_await programVersion(program, cancellation);
    if (auto login = adapter->loginCheck()) {
        program.args = login->argumenty;
        if (!co_await runSuccessfully(std::move(program), login->limit, std::move(cancellation)))
            status.problem = login->problem;
    }
    if (!status.problem && !status.version)
        status.problem = "Binárka nalezena, ale `--version` neodpovědělo. Zkontroluj instalaci."_sentence;
    co_return status;
}

Task<Sentence> AgentDetection::notFoundText(std::shared_ptr<const AgentAdapter> adapter) {
    auto path = co_await discovery_.prihlasovaciPath();
    auto entries = path.empty() ? 0 : std::ranges::count(path, ':') + 1;
    co_return "Binárku „{binarka}“ jsem nenašel (prohledáno {pocet} adresářů). {napoveda}"_sentence(
        adapter->jmenaBinarky().front(), entries, adapter->napoveda());
}

Task<std::optional<std::string>> AgentDetection::programVersion(OutsideProgram program,
                                                                std::stop_token cancellation) {
    auto answer = co_await runSuccessfully(std::move(program), versionLimit, std::move(cancellation));
    if (!answer) co_return std::nullopt;
    auto version = versionIn(answer->vystup);
    co_return version ? version : versionIn(answer->chyby);
}

/// Empty if the program could not be started, failed, or was stopped.
Task<std::optional<VysledekProcesu>>
AgentDetection::runSuccessfully(OutsideProgram program, Clock::Duration limit, std::stop_token cancellation) {
    if (stop_.stop_requested() || cancellation.stop_requested()) co_return std::nullopt;
    ProcessRunner runner(launcher_, clock_);
    auto cancel = [&runner] { runner.zrusit(); };
    std::stop_callback atTheEnd(stop_, cancel);
    std::stop_callback onDemand(cancellation, cancel);
    auto result = co_await runner.spustit(std::move(program), limit, {}, capture);
    if (!result || result->navratovyKod != 0 || result->zruseno || result->vyprselCas) co_return std::nullopt;
    co_return *std::move(result);
}

} // namespace morvex
