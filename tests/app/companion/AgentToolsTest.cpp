#include "tests/app/companion/AgentHarness.h"

#include <set>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using AgentToolsTest = AgentHarness;

constexpr const char* busy = "Na Macu už běží jiný úkol. Nejdřív ho dokonči nebo zastav.";

/// What was sent, a word each.
std::vector<std::string> kinds(const std::vector<ScriptedPhone::Received>& all) {
    std::vector<std::string> words;
    for (const auto& one : all) {
        if (one.payload.as<MacPayload::ToolResult>()) words.push_back("result " + one.requestID);
        if (const auto* progress = one.payload.as<MacPayload::ToolProgress>())
            words.push_back("progress " + one.requestID + ": " + progress->text);
        if (const auto* update = one.payload.as<MacPayload::WorkItemUpdate>())
            words.push_back("task " + update->item.status.rawValue + " " +
                            std::to_string(update->item.revision));
        if (const auto* status = one.payload.as<MacPayload::Status>())
            words.push_back(status->status.runningTask ? "status busy" : "status");
    }
    return words;
}

std::vector<std::string> offeredAgentTools(const ToolGate& gate) {
    std::vector<std::string> names;
    for (const auto& tool : gate.nabizeneNastroje())
        if (tool.name.contains("codex") || tool.name.contains("claude") || tool.name.contains("agent"))
            names.push_back(tool.name);
    return names;
}

TEST_F(AgentToolsTest, ARunIsAcceptedAtOnceAndGoesOnInTheBackground) {
    auto folder = startWithFolder();
    auto answer = result("mac.codex.run", {{"instruction", "Oprav testy\ntady"}, {"title", " Testy "}});
    auto task = historie().polozky().front();
    EXPECT_EQ(answer,
              (boost::json::object{
                  {"accepted", true},
                  {"completed", false},
                  {"message", "Úkol byl přijat. Může běžet několik minut; výsledek oznámím po dokončení."},
                  {"work_item_id", task.workItemID.text()}}));
    EXPECT_TRUE(ok);
    EXPECT_EQ(kinds(received), (std::vector<std::string>{"result req-1", "task in_progress 1", "status"}));
    EXPECT_EQ(task.nazev, "Testy");
    EXPECT_EQ(task.slozka, folder);
    EXPECT_EQ(task.nastroj, "codex");
    EXPECT_TRUE(commandLine().ends_with("Oprav testy\ntady")) << commandLine();

    say(R"({"type":"thread.started","thread_id":"s1"})");
    EXPECT_EQ(
        kinds(settled()),
        (std::vector<std::string>{"task in_progress 2", "progress req-1: Relace navázána.", "status busy"}));
    say(R"({"type":"item.completed","item":{"type":"command_execution","command":"ls"}})");
    EXPECT_EQ(kinds(settled()), (std::vector<std::string>{"progress req-1: Spouštím: ls", "status busy"}));
    say(R"({"type":"turn.completed","text":"Opraveno."})");
    finish();
    auto end = settled();
    EXPECT_EQ(kinds(end), (std::vector<std::string>{"task completed 3", "status"}));
    auto item = itemsIn(end).front();
    EXPECT_EQ(item.summary, "Opraveno.");
    EXPECT_EQ(item.agent, (AgentContinuation{"codex", "s1", "Projekty"}));
}

TEST_F(AgentToolsTest, TheStatusTellsOfTheRunningTask) {
    startWithFolder();
    auto id = begin("mac.claude.run");
    say(R"({"type":"assistant","message":{"content":[{"type":"tool_use","name":"Read"}]}})");
    auto status = takeStatuses().back();
    EXPECT_EQ(status.runningTask,
              (RunningTask{"req-1", id, "claude-code", clock.now(), "Používám nástroj Read."}));
    EXPECT_EQ(result("mac.status")["busy"], "claude-code");
    finish();
    EXPECT_EQ(result("mac.status")["busy"], "");
}

TEST_F(AgentToolsTest, WithSeveralFoldersOneMustBeNamed) {
    startWithFolder();
    allowFolder("Ukázka");
    EXPECT_EQ(error("mac.codex.run", {{"instruction", "x"}}),
              "Neurčil jsi složku. Povolené jsou: Projekty, Ukázka.");
    EXPECT_EQ(error("mac.claude.run", {{"instruction", "x"}, {"folder", "Jiná"}}),
              "Neurčil jsi složku. Povolené jsou: Projekty, Ukázka.");
    EXPECT_TRUE(historie().polozky().empty());
    begin("mac.codex.run", {{"folder", "ukazka"}});
    EXPECT_TRUE(historie().polozky().front().slozka.ends_with("/Ukázka"));
    finish();
}

TEST_F(AgentToolsTest, ASecondRunIsRefusedFromTheAcceptanceOn) {
    startWithFolder();
    phone.call("mac.codex.run", R"({"instruction":"první"})", "first");
    phone.call("mac.claude.run", R"({"instruction":"druhý"})", "second");
    auto all = settled();
    auto* refused = std::ranges::find(all, "second", &ScriptedPhone::Received::requestID)
                        ->payload.as<MacPayload::ToolResult>();
    ASSERT_TRUE(refused);
    EXPECT_FALSE(refused->ok);
    EXPECT_EQ(refused->json, encode(boost::json::object{{"error", busy}}));
    EXPECT_EQ(error("mac.claude.run", {{"instruction", "třetí"}}), busy);
    EXPECT_EQ(historie().polozky().size(), 1U);
    EXPECT_EQ(historie().polozky().front().revize, 1U);
    finish();
    begin("mac.claude.run");
    finish();
}

TEST_F(AgentToolsTest, ATaskIsBusyWhileItsAgentIsStillLookedFor) {
    startWithFolder();
    holdDetections();
    begin("mac.codex.run");
    EXPECT_FALSE(features->agents.runner().bezici());
    EXPECT_EQ(error("mac.claude.run", {{"instruction", "x"}}), busy);
    EXPECT_TRUE(features->agents.currentTask());
    finish();
    finish();
    EXPECT_FALSE(features->agents.currentTask());
}

TEST_F(AgentToolsTest, AFolderThatIsRemovedWhileTheAgentIsLookedForIsNotWorkedIn) {
    const auto folder = startWithFolder();
    holdDetections();
    begin("mac.codex.run");
    features->files.slozky().odebrat(folder);
    finish();
    EXPECT_EQ(historie().polozky().front().chyba, "Složka " + folder + " už není povolená.");
    EXPECT_FALSE(features->agents.currentTask());
}

TEST_F(AgentToolsTest, ProgressOfTheLastMomentComesBeforeTheEndOfTheTask) {
    startWithFolder();
    begin("mac.codex.run");
    (void)settled();
    auto* listener = agent().listener;
    listener->output("{\"type\":\"thread.started\",\"thread_id\":\"s1\"}\n"
                     "{\"type\":\"item.started\",\"item\":{\"type\":\"file_change\"}}\n");
    listener->exited(0);
    listener->ended();
    EXPECT_EQ(kinds(settled()),
              (std::vector<std::string>{"task in_progress 2", "progress req-1: Relace navázána.", "status",
                                        "progress req-1: Upravuji soubory.", "status", "task completed 3",
                                        "status"}));
}

TEST_F(AgentToolsTest, QuirkTheFolderIsTestedBeforeTheRunningTask) {
    startWithFolder();
    begin("mac.codex.run");
    allowFolder("Ukázka");
    EXPECT_EQ(error("mac.codex.run", {{"instruction", "x"}}),
              "Neurčil jsi složku. Povolené jsou: Projekty, Ukázka.");
    EXPECT_EQ(error("mac.codex.run", {{"instruction", "x"}, {"folder", "Projekty"}}), busy);
    finish();
}

TEST_F(AgentToolsTest, QuirkAnEmptyInstructionIsAcceptedAndFailsLater) {
    startWithFolder();
    auto answer = result("mac.codex.run");
    EXPECT_EQ(answer["accepted"], true);
    EXPECT_EQ(kinds(received), (std::vector<std::string>{"result req-1", "task in_progress 1", "status",
                                                         "task failed 2", "status"}));
    EXPECT_EQ(historie().polozky().front().chyba, "Prázdné zadání.");
}

TEST_F(AgentToolsTest, QuirkCancelStopsWhicheverAgentRuns) {
    startWithFolder();
    auto nothing = result("mac.codex.cancel");
    EXPECT_EQ(nothing, (boost::json::object{{"cancelled", false}, {"message", "Nic neběželo."}}));
    EXPECT_TRUE(received.front().payload.as<MacPayload::ToolResult>()->ok);

    auto id = begin("mac.claude.run");
    EXPECT_EQ(result("mac.codex.cancel"),
              (boost::json::object{{"cancelled", true}, {"message", "Zastaveno."}}));
    EXPECT_TRUE(ok);
    EXPECT_EQ(agent().signals, std::vector{ChildSignal::terminate});
    finish(15);
    EXPECT_EQ(itemsIn(settled()).front().status, WorkItemStatus::interrupted);
    EXPECT_FALSE(historie().ukol(id)->chyba);
}

TEST_F(AgentToolsTest, AFailureIsRecordedInItsWords) {
    startWithFolder();
    auto id = begin("mac.codex.run");
    finish(2, "kvóta vyčerpána\n");
    auto item = itemsIn(settled()).front();
    EXPECT_EQ(item.status, WorkItemStatus::failed);
    EXPECT_EQ(item.lastError, "codex skončil chybou: kvóta vyčerpána");
    EXPECT_EQ(historie().ukol(id)->stav, UkolAgenta::Stav::chyba);
}

TEST_F(AgentToolsTest, AnInstructionWithoutAnIdGoesOnInTheLastSessionOfTheFolder) {
    startWithFolder();
    complete("s1");
    begin("mac.codex.run");
    EXPECT_TRUE(commandLine().contains("resume s1")) << commandLine();
    finish();
    EXPECT_EQ(historie().polozky().size(), 2U) << "a task of its own in the same session";
}

TEST_F(AgentToolsTest, AWorkItemGoesOnInItsOwnSession) {
    startWithFolder();
    auto first = complete("s1");
    end();
    startWithFolder();
    begin("mac.codex.run", {{"work_item_id", first.text()}});
    EXPECT_TRUE(commandLine().contains("resume s1")) << commandLine();
    finish();
    EXPECT_EQ(historie().polozky().size(), 1U);
}

TEST_F(AgentToolsTest, AWorkItemWithoutASessionBeginsANewOneWithoutFurtherSearch) {
    startWithFolder();
    complete("s1");
    end();
    startWithFolder();
    const std::string unknown = "99999999-0000-4000-8000-000000000000";
    EXPECT_EQ(begin("mac.codex.run", {{"work_item_id", unknown}}).text(), unknown);
    EXPECT_FALSE(commandLine().contains("resume")) << commandLine();
    finish();
    begin("mac.codex.run", {{"work_item_id", "žádné UUID"}});
    EXPECT_TRUE(commandLine().contains("resume s1")) << "one that is no UUID counts as absent";
    finish();
}

TEST_F(AgentToolsTest, TheSessionThatTheRunnerRemembersOutranksTheHistory) {
    startWithFolder();
    auto first = complete("s1");
    complete("s2");
    begin("mac.codex.run", {{"work_item_id", first.text()}});
    EXPECT_TRUE(commandLine().contains("resume s2")) << commandLine();
    finish();
}

TEST_F(AgentToolsTest, QuirkTheConversationIsOnlyRecorded) {
    startWithFolder();
    complete("s1");
    const std::string conversation = "99999999-0000-4000-8000-000000000000";
    begin("mac.codex.run", {{"conversation_id", conversation}});
    EXPECT_TRUE(commandLine().contains("resume s1")) << commandLine();
    EXPECT_EQ(historie().polozky().front().conversationID->text(), conversation);
    EXPECT_EQ(itemsIn(received).back().conversationID->text(), conversation);
    finish();
    begin("mac.codex.run", {{"conversation_id", "nesmysl"}});
    EXPECT_FALSE(historie().polozky().front().conversationID);
    finish();
}

TEST_F(AgentToolsTest, RenamingFindsItsTaskAndTellsThePhone) {
    startWithFolder();
    auto older = complete("s1");
    auto newer = begin("mac.claude.run");
    finish();
    (void)settled();
    EXPECT_EQ(
        result("mac.agent.rename", {{"title", "  Úklid \n"}, {"agent", "Codex"}, {"folder", "PROJEKTY"}}),
        (boost::json::object{{"renamed", true},
                             {"title", "Úklid"},
                             {"work_item_id", older.text()},
                             {"message", "Relace se v Morvex jmenuje Úklid."}}));
    EXPECT_TRUE(ok);
    EXPECT_EQ(kinds(received), (std::vector<std::string>{"task completed 4", "result req-1"}));
    EXPECT_EQ(itemsIn(received).front().title, "Úklid");
    EXPECT_EQ(result("mac.agent.rename", {{"title", "Poslední"}})["work_item_id"].as_string(), newer.text());
    auto byId = result(
        "mac.agent.rename",
        {{"title", "Starší"}, {"work_item_id", older.text()}, {"agent", "claude"}, {"folder", "Jiná"}});
    EXPECT_EQ(byId["work_item_id"].as_string(), older.text()) << "with an id nothing else is asked";
}

TEST_F(AgentToolsTest, RenamingRefusesInItsOwnWords) {
    startWithFolder();
    EXPECT_EQ(error("mac.agent.rename"), "Chybí nový název relace.");
    EXPECT_EQ(error("mac.agent.rename", {{"title", " \n"}}), "Chybí nový název relace.");
    EXPECT_EQ(error("mac.agent.rename", {{"title", "x"}}), "Odpovídající relaci jsem nenašel.");
    complete("s1");
    EXPECT_EQ(error("mac.agent.rename", {{"title", "x"}, {"agent", "claude"}}),
              "Odpovídající relaci jsem nenašel.");
    EXPECT_EQ(error("mac.agent.rename", {{"title", "x"}, {"folder", "Jiná"}}),
              "Odpovídající relaci jsem nenašel.");
    EXPECT_EQ(error("mac.agent.rename", {{"title", "x"}, {"work_item_id", "žádné UUID"}}),
              "Odpovídající relaci jsem nenašel.");
    EXPECT_EQ(
        error("mac.agent.rename", {{"title", "x"}, {"work_item_id", "99999999-0000-4000-8000-000000000000"}}),
        "Odpovídající relaci jsem nenašel.");
    EXPECT_EQ(historie().polozky().front().nazev, "Oprav testy");
}

TEST_F(AgentToolsTest, AreOfferedWithAFolderASwitchAndAnInstalledAgent) {
    startSecured();
    auto& gate = companion->toolGate();
    EXPECT_EQ(offeredAgentTools(gate), std::vector<std::string>{}) << "without a folder";
    allowFolder("Projekty");
    EXPECT_EQ(offeredAgentTools(gate),
              (std::vector<std::string>{"mac.codex.run", "mac.codex.cancel", "mac.claude.run",
                                        "mac.claude.cancel", "mac.agent.rename"}));
    features->agents.stav().claude = AgentStatus{false, {}, {}, Sentence("chybí")};
    EXPECT_EQ(offeredAgentTools(gate),
              (std::vector<std::string>{"mac.codex.run", "mac.codex.cancel", "mac.agent.rename"}));
    companion->integrations().turnOff(Integration::codex);
    EXPECT_EQ(offeredAgentTools(gate), std::vector<std::string>{"mac.agent.rename"})
        << "whether an agent is installed does not matter for a name";
    companion->integrations().turnOff(Integration::claude);
    EXPECT_EQ(offeredAgentTools(gate), std::vector<std::string>{});
}

TEST_F(AgentToolsTest, EachRunOfTheOwnAssistantTellsThePhoneUnderAFreshLocalId) {
    startWithFolder();
    auto& gate = companion->toolGate();
    const std::string prefix = "mac-local:";
    std::set<Uuid> ids;
    for (int run = 0; run < 2; ++run) {
        executor.start([](ToolGate* gates) -> Task<void> {
            (void)co_await gates->provestMistne("mac.codex.run", {{"instruction", "x"}});
        }(&gate));
        executor.runUntilIdle();
        companion->schvalovani().rozhodnout(true);
        executor.runUntilIdle();
        say(R"({"type":"thread.started","thread_id":"s1"})");
        for (const auto& one : settled()) {
            if (!one.payload.as<MacPayload::ToolProgress>()) continue;
            ASSERT_TRUE(one.requestID.starts_with(prefix)) << one.requestID;
            const auto id = Uuid::parse(one.requestID.substr(prefix.size()));
            ASSERT_TRUE(id) << one.requestID;
            EXPECT_EQ(one.requestID, prefix + id->text());
            ids.insert(*id);
        }
        finish();
    }
    EXPECT_EQ(ids.size(), 2U);
}

} // namespace
} // namespace morvex
