#pragma once

#include "shared/wire/TalkSpanError.h"
#include "tests/app/agents/AgentFixture.h"

#include <boost/json.hpp>

#include <deque>
#include <memory>
#include <optional>
#include <utility>

namespace morvex {

/// A runner whose agents the test plays.
class AgentRunnerFixture : public AgentFixture {
  protected:
    using Assignment = AgentRunner::Assignment;
    using Vysledek = AgentRunner::Vysledek;
    using Outcome = std::shared_ptr<std::optional<Result<Vysledek>>>;

    [[nodiscard]] Assignment task(const std::string& tool = "codex",
                                  std::optional<std::string> session = {}) const {
        return {.requestID = "r1",
                .workItemID = {},
                .nastroj = tool,
                .instrukce = "Oprav to.",
                .slozka = path("work"),
                .relace = std::move(session)};
    }

    /// Starts a task and goes as far as it gets.
    Outcome begin(Assignment assignment) {
        auto outcome = start(std::move(assignment));
        executor.runUntilIdle();
        return outcome;
    }

    /// Starts it with the next run of the executor.
    Outcome start(Assignment assignment) {
        auto outcome = std::make_shared<std::optional<Result<Vysledek>>>();
        AgentListener posluchac{[this](std::string text) { heard.push_back(std::move(text)); },
                                [this](std::string id) { sessions.push_back(std::move(id)); }};
        executor.start(store(runner.spust(std::move(assignment), std::move(posluchac)), outcome));
        return outcome;
    }

    static Task<void> store(Task<Result<Vysledek>> task, Outcome outcome) {
        outcome->emplace(co_await std::move(task));
    }

    ScriptedPrograms::Child& child() { return *programs.children.back(); }

    const OutsideProgram& program() { return programs.programs.back(); }

    [[nodiscard]] std::size_t launches() const { return programs.programs.size(); }

    void say(const std::string& line) {
        child().listener->output(line + "\n");
        executor.runUntilIdle();
    }

    void finish(std::int32_t status = 0, const std::string& errors = {}) {
        if (!errors.empty()) child().listener->errors(errors);
        child().listener->exited(status);
        child().listener->ended();
        executor.runUntilIdle();
    }

    /// The failure's sentence; empty without one.
    static std::string failure(const Outcome& outcome) {
        return *outcome && !**outcome ? (**outcome).error().popis().czech() : "";
    }

    template <class Case> static bool failedAs(const Outcome& outcome) {
        const auto* error = *outcome && !**outcome ? (**outcome).error().as<TalkSpanError>() : nullptr;
        return error && error->as<Case>();
    }

    std::vector<std::string> heard;
    std::vector<std::string> sessions;
    Adaptery adapters = [] {
        auto all = knownAdapters();
        all.emplace("rare", std::make_shared<RareAgent>());
        return all;
    }();
    AgentRunner runner{{programs, clock, discovery, executor, executor}, stop.get_token(), adapters};
};

} // namespace morvex
