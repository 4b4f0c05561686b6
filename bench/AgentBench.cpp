#include "app/agents/AgentRunner.h"
#include "bench/Measure.h"
#include "foundation/ThreadExecutor.h"
#include "platform/memory/ManualClock.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include MORVEX_BASICS

#include <atomic>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <functional>
#include <string>
#include <sys/resource.h>
#include <thread>

// Measures the cost of following an agent: a million events through runner and parser, compared with `jq -c
// .type` on the same file, and the memory used here for an agent that prints without pause.

namespace morvex {
namespace {

constexpr std::size_t eventCount = 1'000'000;

const char* const events[] = {
    R"({"type":"item.started","item":{"id":"item_0","type":"command_execution","command":"make -j2","aggregated_output":"","status":"in_progress"}})",
    R"({"type":"item.completed","item":{"id":"item_0","type":"command_execution","command":"make -j2","aggregated_output":"total 8\ndrwxr-xr-x 2 user user 4096 .\n","exit_code":0,"status":"completed"}})",
    R"({"type":"item.completed","item":{"id":"item_1","type":"reasoning","text":"Prohlížím soubory a hledám chybu."}})",
    R"({"type":"item.completed","item":{"id":"item_2","type":"agent_message","text":"Opravil jsem příliš žluťoučkého koně."}})",
    R"({"type":"item.completed","item":{"id":"item_3","type":"file_change","changes":[{"path":"src/main.cpp","kind":"update"}]}})",
};

/// Peak memory of this process in MiB.
long peakMemory() {
    rusage usage{};
    ::getrusage(RUSAGE_SELF, &usage);
    return usage.ru_maxrss / 1024;
}

/// An agent that is a shell script.
class Bench {
  public:
    Bench() { std::filesystem::create_directories(folder_.path() / "work"); }

    [[nodiscard]] std::string path(const std::string& name) const { return folder_.path() / name; }

    void install(const std::string& script) const {
        std::ofstream(path("codex")) << "#!/bin/sh\n[ \"$1\" = --version ] && exec echo 1.0\n"
                                     << script << '\n';
        std::filesystem::permissions(path("codex"), std::filesystem::perms::owner_all);
    }

    /// Returns the number of progress texts. `during` runs at the same time.
    std::size_t run(const std::function<void()>& during) {
        heard_ = 0;
        std::jthread meanwhile(during);
        (void)await(main_, runner_.spust({"r1", {}, "codex", "x", path("work"), {}},
                                         {[this](const std::string&) { ++heard_; }, {}}));
        return heard_;
    }

    void cancel() {
        await(main_, runOn(main_, [this] { return runner_.zrus(); }));
    }

    void waitForFirst() const {
        while (heard_ == 0) std::this_thread::yield();
    }

    void findPath() { await(main_, discovery_.prihlasovaciPath()); }

  private:
    TemporaryFolder folder_;
    SystemLauncher launcher_;
    ManualClock clock_;
    ThreadExecutor main_{"main"};
    ThreadExecutor workers_{"workers"};
    ProgramDiscovery discovery_{launcher_, clock_, workers_, {{{"PATH", folder_.path()}}, "/nonexistent"}};
    AgentRunner runner_{{launcher_, clock_, discovery_, main_, workers_}, {}};
    std::atomic<std::size_t> heard_ = 0;
};

void benchMemory(Bench& bench, const char* name, const std::string& command) {
    bench.install(std::string("echo '") + events[0] + "'\nexec " + command);
    auto before = peakMemory();
    auto heard = bench.run([&bench] {
        bench.waitForFirst();
        std::this_thread::sleep_for(std::chrono::seconds(3));
        bench.cancel();
    });
    std::printf("%s for 3 s: peak memory %ld MiB, %ld before; %zu progress texts\n", name, peakMemory(),
                before, heard);
}

void benchEvents(Bench& bench) {
    {
        std::ofstream out(bench.path("events"));
        for (std::size_t i = 0; i < eventCount; ++i) out << events[i % std::size(events)] << '\n';
    }
    auto megabytes = static_cast<double>(std::filesystem::file_size(bench.path("events"))) / 1e6;
    bench.install("exec cat '" + bench.path("events") + "'");
    std::size_t heard = 0;
    auto runner = milliseconds([&] { heard = bench.run([] {}); });
    std::printf("%zu events (%.0f MB): runner and parser %.0f ms, %zu progress texts", eventCount, megabytes,
                runner, heard);
    if (!std::filesystem::exists("/usr/bin/jq")) {
        std::printf("; jq is not there\n");
        return;
    }
    int status = 0;
    auto command = "/usr/bin/jq -c .type '" + bench.path("events") + "' >/dev/null";
    auto jq = milliseconds([&] { status = std::system(command.c_str()); });
    require(status == 0, "jq failed");
    std::printf("; jq -c .type %.0f ms (%.2f times)\n", jq, runner / jq);
}

} // namespace
} // namespace morvex

int main() {
    morvex::Bench bench;
    bench.findPath();
    morvex::benchMemory(bench, "events without pause", std::string("yes '") + morvex::events[0] + "'");
    morvex::benchMemory(bench, "a line without end", "tr '\\0' x </dev/zero");
    morvex::benchEvents(bench);
}
