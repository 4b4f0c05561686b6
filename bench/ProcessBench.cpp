#include "app/execution/TerminalBridge.h"
#include "app/programs/ProcessRunner.h"
#include "bench/Measure.h"
#include "foundation/ThreadExecutor.h"
#include "platform/memory/FixedFolders.h"
#include "platform/memory/ManualClock.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include MORVEX_BASICS

#include <cstdio>
#include <fcntl.h>
#include <fstream>
#include <spawn.h>
#include <sys/wait.h>
#include <tuple>
#include <unistd.h>
#include <vector>

// Measures the process runner: the lines of a long output, compared with `wc -l`, and a small command through
// all gates of the terminal tool, compared with the bare start of the same program.

namespace morvex {
namespace {

constexpr std::size_t fileSize = 200'000'000;

/// Runs only the program: without pipes, waiting only for its end.
void spawnAndWait(std::vector<std::string> words) {
    std::vector<char*> arguments;
    for (auto& word : words) arguments.push_back(word.data());
    arguments.push_back(nullptr);
    posix_spawn_file_actions_t actions;
    ::posix_spawn_file_actions_init(&actions);
    ::posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
    pid_t pid = 0;
    require(::posix_spawn(&pid, words.front().c_str(), &actions, nullptr, arguments.data(), environ) == 0,
            "a program of the baseline cannot be started");
    ::waitpid(pid, nullptr, 0);
    ::posix_spawn_file_actions_destroy(&actions);
}

struct Services {
    TemporaryFolder folder;
    ThreadExecutor home{"home"};
    ThreadExecutor workers{"workers"};
    SystemLauncher launcher;
    ManualClock clock;
};

void benchLines(Services& services) {
    auto file = (services.folder.path() / "lines").string();
    std::size_t lines = 0;
    {
        std::ofstream out(file);
        const std::string line(79, 'x');
        for (; lines < fileSize / (line.size() + 1); ++lines) out << line << '\n';
    }
    auto run = [&](Capture capture) {
        std::size_t counted = 0;
        ProcessRunner runner(services.launcher, services.clock);
        auto result =
            await(services.home, runner.spustit(
                                     {.binary = "/bin/cat", .args = {file}}, std::chrono::minutes(1),
                                     [&counted](std::string_view) { ++counted; }, capture));
        require(result && counted == lines, "lines were lost");
    };
    const auto took =
        costs(5, {[&] { run({.vystup = 1'000'000}); }, [&] { run({}); },
                  [&] { spawnAndWait({"/usr/bin/wc", "-l", file}); },
                  [&] { spawnAndWait({"/bin/sh", "-c", "/bin/cat " + file + " | /usr/bin/wc -l"}); }});
    const auto& [bounded, whole, count, piped] = std::tie(took[0], took[1], took[2], took[3]);
    std::printf(
        "200 MB of lines: runner %.0f ms, all of it kept %.0f ms; wc -l %.0f ms (%.1f and %.1f times), "
        "cat | wc -l %.0f ms (%.1f times)\n",
        bounded.wall, whole.wall, count.wall, bounded.wall / count.wall, whole.wall / count.wall, piped.wall,
        bounded.wall / piped.wall);
    std::printf(
        "  processor, the child's too: runner %.0f ms; wc -l %.0f ms (%.1f times), cat | wc -l %.0f ms "
        "(%.1f times)\n",
        bounded.processor, count.processor, bounded.processor / count.processor, piped.processor,
        bounded.processor / piped.processor);
}

void benchGate(Services& services) {
    auto allowed = services.folder.path() / "allowed";
    std::filesystem::create_directory(allowed);
    FixedFolders standard;
    ProgramDiscovery discovery(services.launcher, services.clock, services.workers,
                               {{{"PATH", "/usr/bin:/bin"}}, "/nonexistent"});
    TerminalBridge terminal({services.launcher, services.clock, discovery, services.workers});
    auto povolene = [&] { return AllowedFolders({allowed.string()}, standard); };
    auto run = [&] {
        auto result =
            await(services.home, terminal.spustitPrikaz("ls", {allowed.string()}, {}, povolene, {}));
        require(result && result->status == 0, "the command did not run");
    };
    run();
    const auto took = costs(300, {run, [&] { spawnAndWait({"/usr/bin/ls", allowed.string()}); }});
    std::printf(
        "ls of an empty folder: all gates %.2f ms, posix_spawn %.2f ms (%.2f times); processor %.2f and "
        "%.2f ms (%.2f times)\n",
        took[0].wall, took[1].wall, took[0].wall / took[1].wall, took[0].processor, took[1].processor,
        took[0].processor / took[1].processor);
}

} // namespace
} // namespace morvex

int main() {
    morvex::Services services;
    morvex::benchLines(services);
    morvex::benchGate(services);
}
