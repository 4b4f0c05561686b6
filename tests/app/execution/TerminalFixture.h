#pragma once

#include "app/execution/TerminalBridge.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedPrograms.h"
#include "tests/app/execution/FileTree.h"

#include <gtest/gtest.h>

#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

/// The eighteen programs as files of a path of their own; none is ever started.
class TerminalFixture : public testing::Test {
  protected:
    static constexpr const char* allowedPrograms[] = {"ls",    "cat",  "head",    "tail",       "wc",  "file",
                                                      "stat",  "grep", "rg",      "find",       "du",  "df",
                                                      "swift", "node", "python3", "xcodebuild", "npm", "git"};

    TerminalFixture() {
        for (const char* name : allowedPrograms) program(name);
        programs.answer = [this](const OutsideProgram& asked) {
            if (isCommand(asked)) return answer;
            // Package managers that this computer may have, and the one above, are asked once and say
            // nothing.
            whileLookingForPrograms();
            return std::optional(ScriptedPrograms::Answer{});
        };
    }

    void program(const std::string& name) const {
        tree.file("bin/" + name, "");
        std::filesystem::permissions(tree.path("bin/" + name), std::filesystem::perms::owner_all);
    }

    static bool isCommand(const OutsideProgram& asked) { return asked.cwd.has_value(); }

    Task<Result<TerminalBridge::Vysledek>> task(const std::string& name, const std::vector<std::string>& args,
                                                const std::optional<std::string>& folder = {}) {
        return terminal.spustitPrikaz(
            name, args, folder, [this] { return tree.allowed(allowed); }, stop.get_token());
    }

    Result<TerminalBridge::Vysledek> run(const std::string& name, const std::vector<std::string>& args,
                                         const std::optional<std::string>& folder = {}) {
        return executor.run(task(name, args, folder)).value();
    }

    /// Starts a command that the test plays; its end comes to `later`.
    ScriptedPrograms::Child& begin(const std::string& name, const std::vector<std::string>& args) {
        answer.reset();
        executor.start(store(task(name, args)));
        executor.runUntilIdle();
        return *programs.children.back();
    }

    void end(const ScriptedPrograms::Child& child, std::int32_t status) {
        child.listener->exited(status);
        child.listener->ended();
        executor.runUntilIdle();
    }

    /// The sentence of the refusal; empty when the command was run.
    std::string refusal(const std::string& name, const std::vector<std::string>& args,
                        const std::optional<std::string>& folder = {}) {
        auto before = commands().size();
        auto result = run(name, args, folder);
        EXPECT_EQ(commands().size() - before, result ? 1U : 0U) << "a refused command was started";
        return result ? "" : result.error().popis().czech();
    }

    [[nodiscard]] std::vector<OutsideProgram> commands() const {
        std::vector<OutsideProgram> all;
        for (const auto& asked : programs.programs)
            if (isCommand(asked)) all.push_back(asked);
        return all;
    }

    Task<void> store(Task<Result<TerminalBridge::Vysledek>> running) { later = co_await std::move(running); }

    FileTree tree;
    std::optional<Result<TerminalBridge::Vysledek>> later;
    std::vector<std::string> allowed = {"home/Projects"};
    std::function<void()> whileLookingForPrograms = [] {};
    ManualExecutor executor;
    ManualClock clock;
    ScriptedPrograms programs;
    std::optional<ScriptedPrograms::Answer> answer = ScriptedPrograms::Answer{};
    std::stop_source stop;
    ProgramDiscovery discovery{
        programs, clock, executor, {{{"PATH", tree.path("bin")}, {"TERM", "xterm"}}, tree.path("home")}};
    TerminalBridge terminal{{programs, clock, discovery, executor}};
};

} // namespace morvex
