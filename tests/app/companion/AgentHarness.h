#pragma once

#include "foundation/Text.h"
#include "shared/wire/Json.h"
#include "tests/support/CompanionHarness.h"
#include "tests/support/InstalledAgents.h"

#include <filesystem>

namespace morvex {

/// A companion with both agents installed, logged in, and played by the test.
class AgentHarness : public CompanionHarness {
  protected:
    AgentHarness() { installAgents(temporary.path() / "bin", environment, programs); }

    /// Paired, with a session, and one folder allowed. Gives its path.
    std::string startWithFolder() {
        startSecured();
        auto folder = allowFolder("Projekty");
        executor.runUntilIdle();
        (void)phone.take();
        return folder;
    }

    boost::json::object result(const std::string& tool, const boost::json::object& arguments = {}) {
        phone.call(tool, encode(arguments), "req-1");
        received = settled();
        for (const auto& one : received)
            if (const auto* found = one.payload.as<MacPayload::ToolResult>()) {
                ok = found->ok;
                return parseJson(found->json).value().as_object();
            }
        ADD_FAILURE() << tool << " was not answered";
        return {};
    }

    std::string error(const std::string& tool, const boost::json::object& arguments = {}) {
        auto answer = result(tool, arguments);
        EXPECT_NE(ok, answer.contains("error"));
        return answer.contains("error") ? std::string(answer["error"].as_string()) : "none";
    }

    /// Begins a task whose agent then waits for `say` and `finish`. Gives its work item.
    Uuid begin(const std::string& tool, boost::json::object arguments = {}) {
        arguments.insert_or_assign("instruction", "Oprav testy");
        auto answer = result(tool, arguments);
        EXPECT_TRUE(answer.contains("accepted")) << encode(answer);
        return Uuid::parse(std::string(answer.at("work_item_id").as_string())).value();
    }

    void say(const std::string& line) {
        agent().listener->output(line + "\n");
        executor.runUntilIdle();
    }

    void finish(std::int32_t status = 0, const std::string& errors = {}) {
        auto& running = agent();
        if (!errors.empty()) running.listener->errors(errors);
        running.listener->exited(status);
        running.listener->ended();
        executor.runUntilIdle();
    }

    /// A whole task of Codex, which answers with this session.
    Uuid complete(const std::string& session, boost::json::object arguments = {}) {
        auto id = begin("mac.codex.run", std::move(arguments));
        say(R"({"type":"thread.started","thread_id":")" + session + "\"}");
        finish();
        return id;
    }

    /// From now on the test plays `--version` too, so that a detection ends when the test lets it.
    void holdDetections() {
        auto usual = programs.answer;
        programs.answer = [usual](const OutsideProgram& program) {
            return program.args.front() == "--version" ? std::nullopt : usual(program);
        };
    }

    ScriptedPrograms::Child& agent() { return *programs.children.back(); }

    /// The arguments of the last program, joined.
    [[nodiscard]] std::string commandLine() const { return join(programs.programs.back().args, " "); }

    std::vector<ScriptedPhone::Received> settled() {
        executor.runUntilIdle();
        return phone.take();
    }

    static std::vector<WorkItem> itemsIn(const std::vector<ScriptedPhone::Received>& all) {
        std::vector<WorkItem> items;
        for (const auto& one : all)
            if (const auto* update = one.payload.as<MacPayload::WorkItemUpdate>()) {
                EXPECT_EQ(one.requestID, "work-item:" + update->item.id.text());
                items.push_back(update->item);
            }
        return items;
    }

    [[nodiscard]] std::filesystem::path applicationSupport() const { return folders.applicationSupport(); }

    HistorieAgentu& historie() { return features->agents.historie(); }

    std::vector<ScriptedPhone::Received> received; ///< with the last `result`
    bool ok = false;                               ///< of the last `result`
};

} // namespace morvex
