#include "shared/wire/Json.h"
#include "tests/e2e/EndToEnd.h"

#include <boost/json.hpp>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <thread>
#include <utility>

namespace morvex {
namespace {

/// The common part of both agents: they answer the detection, and work in their folder until the file "go"
/// exists.
constexpr const char* scriptBegin = R"(#!/bin/sh
[ "$1" = --version ] && { echo "agent 1.0"; exit; }
[ "$1" = auth ] && exit
echo "$*" >> arguments
echo $$ > agent
)";

constexpr const char* codexScript = R"(
echo '{"type":"thread.started","thread_id":"s1"}'
echo '{"type":"item.completed","item":{"type":"command_execution","command":"make"}}'
while [ ! -e go ]; do sleep 0.02; done
echo '{"type":"turn.completed","text":"Opraveno."}'
)";

constexpr const char* claudeScript = R"(
echo '{"type":"system","subtype":"init","session_id":"c1"}'
echo '{"type":"assistant","session_id":"c1","message":{"content":[{"type":"tool_use","name":"Edit"}]}}'
while [ ! -e go ]; do sleep 0.02; done
echo '{"type":"result","subtype":"success","is_error":false,"result":"Upraveno.","session_id":"c1"}'
)";

/// Whether the process exists and is not a zombie.
bool runs(pid_t process) {
    std::stringstream text;
    text << std::ifstream("/proc/" + std::to_string(process) + "/stat").rdbuf();
    auto afterName = text.str().rfind(") ");
    return afterName != std::string::npos && text.str()[afterName + 2] != 'Z';
}

/// A companion with agents that are small scripts. None of them outlives a test.
class AgentsTest : public EndToEnd {
  protected:
    AgentsTest() {
        auto bin = temporary.path() / "agents";
        std::filesystem::create_directories(bin);
        for (auto [name, script] : {std::pair("codex", codexScript), std::pair("claude", claudeScript)}) {
            std::ofstream(bin / name) << scriptBegin << script;
            std::filesystem::permissions(bin / name, std::filesystem::perms::owner_all);
        }
        shared["PATH"] = bin.string() + ":/usr/bin:/bin";
        mac = startMac();
        pair(*mac);
        folder = allow(*mac, "Ukázka");
        awaitAgents();
    }

    ~AgentsTest() override {
        mac.reset();
        awaitEndOfAgent();
    }

    /// Waits for the agent that was started last.
    void awaitEndOfAgent() const {
        pid_t agent = 0;
        std::ifstream(folder + "/agent") >> agent;
        for (int tries = 0; agent > 0 && runs(agent); ++tries) {
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
            if (tries < 200) continue;
            ::kill(-agent, SIGKILL);
            ADD_FAILURE() << "the agent outlives the program";
            return;
        }
    }

    /// Waits until the detection, which asks both programs, has finished.
    void awaitAgents() {
        const auto end = std::chrono::steady_clock::now() + std::chrono::minutes(1);
        while (std::chrono::steady_clock::now() < end)
            if (phone({"tools"}).output.contains("mac.claude.run")) return;
        FAIL() << "no agent is on offer: " << phone({"status"}).output;
    }

    /// An interactive shell of the phone.
    std::unique_ptr<Program> openPhone() {
        auto program = std::make_unique<Program>(
            "morvex-phone",
            std::vector<std::string>{"--data", (temporary.path() / "phone").string(), "shell"},
            environment("phone"));
        program->type("tools");
        program->waitForLine("mac.status");
        return program;
    }

    boost::json::object call(const std::string& tool, const boost::json::object& arguments = {}) {
        auto ended = phone({"--json", "call", tool, encode(arguments)});
        EXPECT_EQ(ended.code, 0) << ended.output;
        // Session messages may precede and follow the result.
        auto from = ended.output.find("\n{") == std::string::npos ? 0 : ended.output.find("\n{") + 1;
        auto parsed = parseJson(ended.output.substr(from, ended.output.find('\n', from) - from));
        EXPECT_TRUE(parsed && parsed->is_object()) << ended.output;
        return parsed && parsed->is_object() ? parsed->as_object() : boost::json::object();
    }

    /// The task list of the companion's console. The answer to an unknown word marks the end of the list.
    std::string tasks() {
        auto before = mac->output().size();
        mac->type("ulohy");
        mac->type("tecka");
        mac->waitForNextLine("„tecka“");
        return mac->output().substr(before);
    }

    void awaitTask(const std::string& text) {
        for (int tries = 0; tries < 600; ++tries) {
            if (tasks().contains(text)) return;
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
        FAIL() << mac->output();
    }

    void go() const { std::ofstream(folder + "/go") << "x"; }

    [[nodiscard]] std::string arguments() const {
        std::stringstream text;
        text << std::ifstream(folder + "/arguments").rdbuf();
        return text.str();
    }

    std::unique_ptr<Program> mac;
    std::string folder;
};

TEST_F(AgentsTest, ATaskIsAcceptedAtOnceAndTellsItsProgressAndItsEnd) {
    auto prompt = openPhone();
    prompt->type(R"(call mac.codex.run {"instruction":"Oprav testy"})");
    prompt->waitForLine("Úkol byl přijat.");
    prompt->waitForLine("průběh: Relace navázána.");
    prompt->waitForLine("průběh: Spouštím: make");
    prompt->type(R"(call mac.claude.run {"instruction":"Další"})");
    prompt->waitForLine("Na Macu už běží jiný úkol. Nejdřív ho dokonči nebo zastav.");
    prompt->type("status");
    prompt->waitForLine("codex od ");
    go();
    prompt->waitForLine("úkol: Oprav testy — hotovo: Opraveno.");
    prompt->type("quit");
}

TEST_F(AgentsTest, AResultWaitsForThePhoneAndALaterCallGoesOnInTheSession) {
    auto id = call("mac.codex.run", {{"instruction", "Oprav testy"}})["work_item_id"];
    go();
    awaitTask("Oprav testy — hotovo (codex, Ukázka): Opraveno.");
    auto listed = phone({"tasks"});
    EXPECT_TRUE(listed.output.contains("Oprav testy — hotovo: Opraveno.\n")) << listed.output;
    EXPECT_TRUE(listed.output.contains("úkol: ")) << "it was told just now: " << listed.output;
    listed = phone({"tasks"});
    EXPECT_TRUE(listed.output.contains("Oprav testy — hotovo: Opraveno.\n")) << listed.output;
    EXPECT_FALSE(listed.output.contains("úkol: ")) << "it was acknowledged: " << listed.output;

    EXPECT_EQ(call("mac.codex.run", {{"instruction", "Pokračuj"}, {"work_item_id", id}})["work_item_id"], id);
    awaitTask("Oprav testy — hotovo");
    EXPECT_TRUE(arguments().contains("resume s1 Pokračuj")) << arguments();

    auto renamed = call("mac.agent.rename", {{"title", " Testy "}, {"agent", "codex"}, {"folder", "ukazka"}});
    EXPECT_EQ(renamed["message"], "Relace se v Morvex jmenuje Testy.");
    EXPECT_EQ(renamed["work_item_id"], id);
    awaitTask("Testy — hotovo");
}

TEST_F(AgentsTest, TheOtherAgentTellsItsOwnEventsAndGoesOnInItsOwnSession) {
    auto id = call("mac.claude.run", {{"instruction", "Uprav testy"}})["work_item_id"];
    awaitTask("Uprav testy — běží (claude-code, Ukázka): Používám nástroj Edit.");
    go();
    awaitTask("Uprav testy — hotovo (claude-code, Ukázka): Upraveno.");
    call("mac.claude.run", {{"instruction", "Pokračuj"}, {"work_item_id", id}});
    awaitTask("Uprav testy — hotovo");
    EXPECT_TRUE(arguments().contains("-p Pokračuj --output-format stream-json --verbose --resume c1 "))
        << arguments();
}

TEST_F(AgentsTest, ThePhoneOrThePersonStopsATask) {
    call("mac.claude.run", {{"instruction", "Oprav testy"}});
    awaitTask("běží");
    auto stopped = call("mac.codex.cancel");
    for (int tries = 0; tries < 60 && stopped["cancelled"] != true; ++tries)
        stopped = call("mac.codex.cancel");
    EXPECT_EQ(stopped["message"], "Zastaveno.");
    awaitTask("Oprav testy — přerušeno (claude-code, Ukázka)");

    call("mac.codex.run", {{"instruction", "Znovu"}});
    awaitTask("Znovu — běží (codex, Ukázka): Spouštím: make");
    mac->type("zastav");
    mac->waitForNextLine("Zastavuji úlohu.");
    awaitTask("Znovu — přerušeno (codex, Ukázka)");
    EXPECT_EQ(call("mac.codex.cancel")["message"], "Nic neběželo.");
}

TEST_F(AgentsTest, ATaskThatRanAtTheEndOfTheProgramComesBackInterruptedAndItsAgentIsGone) {
    for (const auto& [signal, task] : {std::pair(SIGKILL, "První"), std::pair(SIGTERM, "Druhý")}) {
        call("mac.codex.run", {{"instruction", task}});
        awaitTask(std::string(task) + " — běží (codex, Ukázka): Spouštím: make");
        mac->signal(signal);
        mac->wait();
        awaitEndOfAgent();
        mac = startMac();
        awaitTask(std::string(task) + " — přerušeno (codex, Ukázka)");
        auto prompt = openPhone();
        prompt->waitForLine("úkol: " + std::string(task) + " — přerušeno");
        prompt->type("quit");
        prompt->wait();
        awaitAgents();
    }
}

} // namespace
} // namespace morvex
