#include "app/agents/AgentId.h"
#include "app/agents/AgentRunner.h"
#include "foundation/Printable.h"
#include "foundation/TaskScope.h"
#include "foundation/ThreadExecutor.h"
#include "platform/posix/OwnEnvironment.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include MORVEX_BASICS

#include <cstdio>
#include <string>

// What detection and a task say of the agents that are found in PATH. Whatever an agent does is printed, and
// nothing is asserted: agents change.

namespace morvex {
namespace {

const std::string unknownSession = "6f9619ff-8b86-4d01-b42d-00c04fc964ff";

void print(const std::string& name, const std::optional<std::string>& value) {
    std::printf("  %-10s %s\n", name.c_str(), printableLine(value.value_or("-")).c_str());
}

Task<void> cancelLater(Clock& clock, AgentRunner& runner, std::stop_token ended) {
    if (co_await sleepFor(clock, std::chrono::seconds(40), ended)) {
        print("cancel", "after 40 seconds");
        runner.zrus();
    }
}

struct Check {
    AgentRunner& runner;
    Clock& clock;
    Executor& main;
    std::string agent;
};

Task<void> detect(Check check) {
    std::printf("%s\n", check.agent.c_str());
    auto status = co_await check.runner.zjisti(check.agent);
    print("installed", status.installed ? "yes" : "no");
    print("version", status.version);
    print("source", status.source);
    print("problem", status.problem ? std::optional(status.problem->czech()) : std::nullopt);
}

Task<void> work(Check check, std::string folder, std::optional<std::string> session) {
    std::printf(" a task that continues %s\n", session.value_or("nothing").c_str());
    TaskScope scope(check.main);
    scope.spawn(cancelLater(check.clock, check.runner, scope.token()));
    AgentRunner::Posluchac posluchac{[](std::string text) { print("progress", text); },
                                     [](std::string id) { print("session", id); }};
    AgentRunner::Assignment assignment{"check", {}, check.agent, "Odpověz jedním slovem.", folder, session};
    auto outcome = co_await check.runner.spust(std::move(assignment), std::move(posluchac));
    scope.stop();
    co_await scope.join();
    print(outcome ? "result" : "failure", outcome ? outcome->text : outcome.error().popis().czech());
}

int run() {
    auto clock = SystemClock::create();
    require(clock.has_value(), "there is no clock");
    TemporaryFolder first;
    TemporaryFolder second;
    SystemLauncher launcher;
    ThreadExecutor main("main");
    ThreadExecutor workers("workers");
    ProgramDiscovery discovery(launcher, **clock, workers, {ownEnvironment(), first.path()});
    AgentRunner runner({launcher, **clock, discovery, main, workers}, {});
    for (auto agent : {AgentId::codex, AgentId::claudeCode}) {
        Check check{runner, **clock, main, std::string(agent)};
        await(main, detect(check));
        await(main, work(check, first.path(), {}));
        await(main, work(check, second.path(), unknownSession));
    }
    return 0;
}

} // namespace
} // namespace morvex

int main() {
    return morvex::run();
}
