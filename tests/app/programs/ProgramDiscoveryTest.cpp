#include "app/programs/ProgramDiscovery.h"

#include "foundation/Text.h"
#include "foundation/ThreadExecutor.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedPrograms.h"
#include "shared/base/SystemError.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include MORVEX_BASICS

#include <gtest/gtest.h>

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <map>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using Answer = ScriptedPrograms::Answer;
using FoundProgram = ProgramDiscovery::FoundProgram;
using testing::ElementsAre;
using testing::IsSupersetOf;
using testing::StartsWith;

Task<void> note(ProgramDiscovery& discovery, std::vector<std::string>& paths) {
    paths.push_back(co_await discovery.prihlasovaciPath());
}

/// Executable files in a temporary folder, and answers of programs by the name of their binary.
class ProgramDiscoveryTest : public testing::Test {
  protected:
    ProgramDiscoveryTest() {
        programs.answer = [this](const OutsideProgram& program) -> std::optional<Answer> {
            auto found = answers.find(std::filesystem::path(program.binary).filename());
            return found == answers.end() ? Answer{.status = 1} : found->second;
        };
        environment["PATH"] = path("own");
    }

    [[nodiscard]] std::string path(const std::string& name) const { return (folder.path() / name).string(); }

    void file(const std::string& name,
              std::filesystem::perms mode = std::filesystem::perms::owner_all) const {
        std::filesystem::create_directories(std::filesystem::path(path(name)).parent_path());
        std::ofstream(path(name)) << "x";
        std::filesystem::permissions(path(name), mode);
    }

    ProgramDiscovery& discovery() {
        if (!made)
            made.emplace(programs, clock, executor, ProgramDiscovery::Account{environment, path("home")},
                         stop.get_token());
        return *made;
    }

    std::string resolved() { return executor.run(discovery().prihlasovaciPath()).value(); }

    std::vector<std::string> entries() {
        std::vector<std::string> all;
        std::istringstream text(resolved());
        for (std::string entry; std::getline(text, entry, ':');) all.push_back(entry);
        return all;
    }

    std::optional<FoundProgram> find(const std::vector<std::string>& names) {
        return executor.run(discovery().najdiBinarku(names)).value();
    }

    /// The entries before the fixed list.
    std::vector<std::string> leading() {
        auto all = entries();
        auto end = std::ranges::find(all, "/opt/homebrew/bin");
        return {all.begin(), end};
    }

    /// The entries behind the fixed list.
    std::vector<std::string> trailing() {
        auto all = entries();
        auto last = std::ranges::find(all, "/opt/homebrew/opt/node/bin");
        return {last + 1, all.end()};
    }

    TemporaryFolder folder;
    ManualExecutor executor;
    ManualClock clock;
    ScriptedPrograms programs;
    Environment environment;
    std::map<std::string, Answer> answers;
    std::stop_source stop;
    std::optional<ProgramDiscovery> made;
};

TEST_F(ProgramDiscoveryTest, TheFixedListFollowsTheOwnPathInItsOrder) {
    auto home = path("home");
    EXPECT_EQ(resolved(),
              join({path("own"), "/opt/homebrew/bin", "/usr/local/bin", "/usr/bin", "/bin", "/usr/sbin",
                    "/sbin", home + "/.local/bin", home + "/.bun/bin", home + "/.deno/bin",
                    home + "/.volta/bin", home + "/.npm-global/bin", home + "/.yarn/bin",
                    home + "/.cargo/bin", home + "/.claude/local", home + "/.codex/bin",
                    home + "/Library/pnpm", home + "/.local/share/pnpm", "/opt/homebrew/opt/node/bin"},
                   ":"));
}

TEST_F(ProgramDiscoveryTest, TheHomeFolderIsTheAccountsAndNotTheEnvironments) {
    environment["HOME"] = "/elsewhere";
    EXPECT_THAT(resolved(), testing::Not(testing::HasSubstr("/elsewhere")));
}

TEST_F(ProgramDiscoveryTest, TheLoginShellIsAskedInteractivelyInTheOwnEnvironment) {
    environment["SHELL"] = "/bin/zsh";
    environment["X"] = "1";
    resolved();
    ASSERT_FALSE(programs.programs.empty());
    const auto& shell = programs.programs.front();
    EXPECT_EQ(shell.binary, "/bin/zsh");
    EXPECT_THAT(shell.args, ElementsAre("-ilc", "command -p echo \"$PATH\""));
    EXPECT_EQ(shell.env, environment);
    EXPECT_EQ(shell.cwd, std::nullopt);
}

TEST_F(ProgramDiscoveryTest, OnlyTheLastLineOfTheShellCounts) {
    environment["SHELL"] = "/bin/zsh";
    answers["zsh"] = {.output = "Welcome!\n/banner:/of/the/day\n\n/a:/b::  /c  :/a\n\n", .errors = "/error"};
    EXPECT_THAT(leading(), ElementsAre("/a", "/b", "/c", path("own")));
}

TEST_F(ProgramDiscoveryTest, AShellThatGivesNoPathYieldsNothing) {
    const Answer silent[] = {
        {.errors = "command: unknown option -p", .status = 2},
        {.output = "This account is currently not available.\n", .status = 1},
        {.output = "\n\n"},
    };
    for (const auto& answer : silent) {
        made.reset();
        environment["SHELL"] = "/usr/bin/fish";
        answers["fish"] = answer;
        EXPECT_THAT(leading(), ElementsAre(path("own"))) << answer.output;
    }
}

TEST_F(ProgramDiscoveryTest, AShellThatCannotBeStartedYieldsNothing) {
    environment["SHELL"] = "/nonexistent";
    programs.problems.emplace("/nonexistent", SystemError{ENOENT});
    EXPECT_THAT(leading(), ElementsAre(path("own")));
}

TEST_F(ProgramDiscoveryTest, WithoutShellTheStepIsSkipped) {
    EXPECT_THAT(leading(), ElementsAre(path("own")));
    for (const auto& program : programs.programs)
        EXPECT_THAT(program.args, testing::Not(testing::Contains("-ilc")));
}

TEST_F(ProgramDiscoveryTest, AShellThatHangsIsStoppedAfterEightSeconds) {
    environment["SHELL"] = "/bin/zsh";
    programs.answer = [](const OutsideProgram& program) {
        return program.binary == "/bin/zsh" ? std::nullopt : std::optional(Answer{});
    };
    EXPECT_EQ(executor.run(discovery().prihlasovaciPath()), std::nullopt);
    EXPECT_EQ(clock.untilNext(), 8s);
    clock.advance(8s);
    auto& shell = *programs.children.front();
    EXPECT_THAT(shell.signals, ElementsAre(ChildSignal::terminate));
    shell.listener->exited(15);
    shell.listener->ended();
    executor.runUntilIdle();
    EXPECT_THAT(leading(), ElementsAre(path("own")));
}

TEST_F(ProgramDiscoveryTest, HoweverMuchAProgramPrintsItsLastLineCounts) {
    environment["SHELL"] = "/bin/zsh";
    file("own/npm");
    const std::string before[] = {
        std::string(3'000'000, 'x') + "\n",
        std::string(600'000, '\xff') + "\n", // which is three times as long when it is repaired
        std::string(3'000'000, '\n'),
        std::string(1024 * 1024 - 7, 'x') + "\n", // as much as is kept, with what the shell prints behind it
        std::string(1024 * 1024 - 6, 'x') + "\n",
    };
    for (const auto& banner : before) {
        made.reset();
        answers["zsh"] = {.output = banner + "/a:/b\n"};
        answers["npm"] = {.output = banner + "/npm"};
        EXPECT_THAT(leading(), ElementsAre("/a", "/b", path("own"))) << banner.size();
        EXPECT_THAT(trailing(), ElementsAre("/npm/bin")) << banner.size();
    }
}

TEST_F(ProgramDiscoveryTest, ALastLineOfMoreThanAMebibyteYieldsNothing) {
    environment["SHELL"] = "/bin/zsh";
    constexpr std::size_t most = 1024 * 1024;
    for (std::size_t length : {most + 1, 3 * most}) {
        made.reset();
        answers["zsh"] = {.output = "/a\n/b" + std::string(length - 4, ':') + "/c"};
        EXPECT_THAT(leading(), ElementsAre(path("own"))) << length;
    }
    made.reset();
    answers["zsh"] = {.output = "/b" + std::string(most - 4, ':') + "/c"};
    EXPECT_THAT(leading(), ElementsAre("/b", "/c", path("own"))) << "it is all that was printed";
}

TEST_F(ProgramDiscoveryTest, AShellThatPrintsWithoutEndIsStoppedAfterEightSeconds) {
    environment["SHELL"] = "/bin/zsh";
    programs.answer = [](const OutsideProgram& program) {
        return program.binary == "/bin/zsh" ? std::nullopt : std::optional(Answer{});
    };
    EXPECT_EQ(executor.run(discovery().prihlasovaciPath()), std::nullopt);
    auto& shell = *programs.children.front();
    for (int i = 0; i < 50; ++i) shell.listener->output(std::string(100'000, '/'));
    clock.advance(8s);
    EXPECT_THAT(shell.signals, ElementsAre(ChildSignal::terminate));
    shell.listener->exited(15);
    shell.listener->ended();
    executor.runUntilIdle();
    EXPECT_THAT(leading(), ElementsAre(path("own")));
}

TEST_F(ProgramDiscoveryTest, AStopEndsTheProgramThatIsAskedAndAsksNoOther) {
    environment["SHELL"] = "/bin/zsh";
    file("own/npm");
    programs.answer = [](const OutsideProgram&) { return std::nullopt; };
    EXPECT_EQ(executor.run(discovery().prihlasovaciPath()), std::nullopt);
    stop.request_stop();
    auto& shell = *programs.children.front();
    EXPECT_THAT(shell.signals, ElementsAre(ChildSignal::terminate));
    shell.listener->exited(15);
    shell.listener->ended();
    executor.runUntilIdle();
    EXPECT_EQ(programs.programs.size(), 1U);
    EXPECT_THAT(leading(), ElementsAre(path("own")));
}

TEST_F(ProgramDiscoveryTest, ManyWhoAskAtOnceGetThePathOfOneResolution) {
    environment["SHELL"] = "/bin/zsh";
    programs.answer = [](const OutsideProgram& program) {
        return program.binary == "/bin/zsh" ? std::nullopt : std::optional(Answer{});
    };
    std::vector<std::string> paths;
    for (int i = 0; i < 3; ++i) executor.start(note(discovery(), paths));
    executor.runUntilIdle();
    ASSERT_EQ(programs.children.size(), 1U);
    auto& shell = *programs.children.front();
    shell.listener->output("/bin/of/shell\n");
    shell.listener->exited(0);
    shell.listener->ended();
    executor.runUntilIdle();
    ASSERT_EQ(paths.size(), 3U);
    for (const auto& each : paths) EXPECT_THAT(each, StartsWith("/bin/of/shell:"));
    EXPECT_EQ(std::ranges::count(programs.programs, "/bin/zsh", &OutsideProgram::binary), 1);
}

TEST_F(ProgramDiscoveryTest, DuplicatesKeepTheirFirstPosition) {
    environment["PATH"] = "/x:/usr/bin:/x:/y:/sbin";
    auto all = entries();
    EXPECT_THAT(leading(), ElementsAre("/x", "/usr/bin", "/y", "/sbin"));
    EXPECT_EQ(std::ranges::count(all, "/usr/bin"), 1);
}

TEST_F(ProgramDiscoveryTest, EmptyAndRelativeEntriesAreDropped) {
    environment["PATH"] = ":.: :node_modules/.bin:/x::~/bin:";
    EXPECT_THAT(leading(), ElementsAre("/x"));
}

TEST_F(ProgramDiscoveryTest, PackageManagersAreAskedInOrderWithThePathAlone) {
    for (const char* name : {"own/bun", "own/yarn", "own/pnpm", "own/npm"}) file(name);
    environment["X"] = "1";
    answers["npm"] = {.output = "/npm\n"};
    answers["pnpm"] = {.output = "note\n /pnpm \n"};
    answers["yarn"] = {.output = "/yarn", .status = 7};
    answers["bun"] = {.output = "/usr/bin\n"};
    EXPECT_THAT(trailing(), ElementsAre("/npm/bin", "/pnpm", "/yarn"));
    ASSERT_EQ(programs.programs.size(), 4U);
    const std::vector<std::string> args[] = {
        {"config", "get", "prefix"}, {"bin", "-g"}, {"global", "bin"}, {"pm", "bin", "-g"}};
    for (std::size_t i = 0; i < 4; ++i) {
        EXPECT_EQ(programs.programs[i].args, args[i]);
        ASSERT_EQ(programs.programs[i].env.size(), 1U);
        EXPECT_THAT(programs.programs[i].env.at("PATH"), testing::EndsWith("/opt/homebrew/opt/node/bin"));
        EXPECT_EQ(programs.programs[i].cwd, std::nullopt);
    }
}

TEST_F(ProgramDiscoveryTest, AManagerThatAnswersNoAbsolutePathAddsNothing) {
    file("own/npm");
    file("own/pnpm");
    answers["npm"] = {.output = "/right\nnpm WARN a newer version exists\n"};
    answers["pnpm"] = {.output = "relative/bin\n"};
    EXPECT_THAT(trailing(), ElementsAre());
}

TEST_F(ProgramDiscoveryTest, AManagerThatCannotBeStartedDropsItselfOnly) {
    file("own/npm");
    file("own/pnpm");
    answers["npm"] = {.output = "/npm"};
    answers["pnpm"] = {.output = "/pnpm"};
    programs.problems.emplace(path("own/npm"), SystemError{EACCES});
    EXPECT_THAT(trailing(), ElementsAre("/pnpm"));
}

TEST_F(ProgramDiscoveryTest, ThePathIsResolvedOnceUntilItIsRenewed) {
    environment["SHELL"] = "/bin/zsh";
    answers["zsh"] = {.output = "/first"};
    EXPECT_THAT(resolved(), StartsWith("/first:"));
    answers["zsh"] = {.output = "/second"};
    auto started = programs.programs.size();
    EXPECT_THAT(resolved(), StartsWith("/first:"));
    find({"x"});
    executor.run(discovery().prostrediNastroju());
    EXPECT_EQ(programs.programs.size(), started);
    EXPECT_THAT(executor.run(discovery().prihlasovaciPath(ProgramDiscovery::Cache::refresh)).value(),
                StartsWith("/second:"));
    EXPECT_THAT(resolved(), StartsWith("/second:"));
}

TEST_F(ProgramDiscoveryTest, TheOrderOfNamesOutranksTheOrderOfFolders) {
    environment["PATH"] = path("one") + ":" + path("two") + ":" + path("three");
    file("three/first");
    file("one/second");
    file("two/second");
    EXPECT_EQ(find({"first", "second"}), (FoundProgram{path("three/first"), path("three")}));
    EXPECT_EQ(find({"missing-tool", "second"}), (FoundProgram{path("one/second"), path("one")}));
}

TEST_F(ProgramDiscoveryTest, OnlyAnExecutableFileIsFound) {
    environment["PATH"] = path("one") + ":" + path("two") + ":" + path("three");
    file("one/tool", std::filesystem::perms::owner_read);
    std::filesystem::create_directories(path("two/tool"));
    EXPECT_EQ(find({"tool"}), std::nullopt);
    std::filesystem::create_directories(path("three"));
    file("elsewhere/tool");
    std::filesystem::create_symlink(path("elsewhere/tool"), path("three/tool"));
    EXPECT_EQ(find({"tool"}), (FoundProgram{path("three/tool"), path("three")}));
}

TEST_F(ProgramDiscoveryTest, ATextThatIsNoNameIsNotFound) {
    EXPECT_EQ(find({}), std::nullopt);
    EXPECT_EQ(find({""}), std::nullopt);
    EXPECT_EQ(find({"no-such-tool-anywhere"}), std::nullopt);
}

TEST_F(ProgramDiscoveryTest, ToolsGetTheOwnEnvironmentForPlainText) {
    environment["PATH"] = "/x";
    environment["TERM"] = "xterm";
    environment["LANG"] = "cs_CZ.UTF-8";
    environment["NO_COLOR"] = "";
    environment["FORCE_COLOR"] = "3";
    environment["CI"] = "false";
    auto given = executor.run(discovery().prostrediNastroju()).value();
    EXPECT_EQ(given, (Environment{{"PATH", resolved()},
                                  {"TERM", "dumb"},
                                  {"LANG", "cs_CZ.UTF-8"},
                                  {"NO_COLOR", "1"},
                                  {"FORCE_COLOR", "0"},
                                  {"CI", "1"}}));
}

TEST(ProgramDiscovery, ARealShellWithABannerGivesThePathOfItsStartUpFiles) {
    TemporaryFolder folder;
    std::ofstream(folder.path() / ".bash_profile") << "echo Welcome\nexport PATH=/from/profile:$PATH\n";
    SystemLauncher launcher;
    ManualClock clock;
    ThreadExecutor home("home");
    ThreadExecutor workers("workers");
    ProgramDiscovery discovery(
        launcher, clock, workers,
        {{{"SHELL", "/bin/bash"}, {"HOME", folder.path().string()}, {"PATH", "/usr/bin:/bin"}},
         folder.path().string()});
    EXPECT_THAT(await(home, discovery.prihlasovaciPath()),
                testing::AllOf(StartsWith("/from/profile:/"), testing::HasSubstr(":/opt/homebrew/bin:")));
    EXPECT_EQ(await(home, discovery.najdiBinarku({"no-such-tool", "sh"}))->binary.substr(0, 5), "/usr/");
}

} // namespace
} // namespace morvex
