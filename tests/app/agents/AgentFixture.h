#pragma once

#include "app/agents/AgentRunner.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedPrograms.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <functional>
#include <string>

namespace morvex {

/// An agent that no computer has installed; it tells what CodexAdapter tells, and nothing of a login.
class RareAgent final : public AgentAdapter {
  public:
    [[nodiscard]] std::string id() const override { return "rare"; }

    [[nodiscard]] std::vector<std::string> jmenaBinarky() const override {
        return {"morvex-rare-agent", "morvex-rare-cli"};
    }

    [[nodiscard]] Sentence napoveda() const override { return Sentence("Nainstaluj ho."); }

    [[nodiscard]] std::vector<std::string> argumenty(std::string instrukce, std::string,
                                                     std::optional<std::string>) const override {
        return {std::move(instrukce)};
    }

    [[nodiscard]] std::optional<ZpravaAgenta> precti(std::string_view) const override { return {}; }

    [[nodiscard]] bool isSessionGone(std::string_view) const override { return false; }
};

/// Agents that are found on the disk and played by the test.
class AgentFixture : public testing::Test {
  protected:
    using Answer = ScriptedPrograms::Answer;

    AgentFixture() {
        std::filesystem::create_directories(path("bin"));
        std::filesystem::create_directories(path("work"));
        for (const char* name : {"codex", "claude"}) install(name);
        programs.answer = [this](const OutsideProgram& program) { return answer(program); };
    }

    [[nodiscard]] std::string path(const std::string& name) const { return (folder.path() / name).string(); }

    void install(const std::string& name) const {
        std::ofstream(path("bin/" + name)) << "x";
        std::filesystem::permissions(path("bin/" + name), std::filesystem::perms::owner_all);
    }

    void uninstall(const std::string& name) const { std::filesystem::remove(path("bin/" + name)); }

    /// The runs of an agent itself have no answer: the test plays them.
    virtual std::optional<Answer> answer(const OutsideProgram& program) {
        if (!program.binary.starts_with(path("bin"))) return Answer{};
        if (program.args == std::vector<std::string>{"--version"}) return version;
        if (program.args == std::vector<std::string>{"auth", "status", "--json"}) return login;
        return std::nullopt;
    }

    TemporaryFolder folder;
    ScriptedPrograms programs;
    ManualClock clock;
    ManualExecutor executor;
    std::optional<Answer> version = Answer{.output = "agent 1.0\n"};
    std::optional<Answer> login = Answer{};
    ProgramDiscovery discovery{
        programs, clock, executor, {{{"PATH", path("bin")}, {"LANG", "C"}}, path("home")}};
    std::stop_source stop;
};

} // namespace morvex
