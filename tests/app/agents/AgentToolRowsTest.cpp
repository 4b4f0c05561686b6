#include "app/agents/AgentTools.h"
#include "app/execution/AllowedFolders.h"
#include "platform/memory/FixedFolders.h"
#include "platform/memory/ImmediateExecutor.h"
#include "platform/memory/ScriptedRandom.h"
#include "platform/memory/ScriptedUrlOpener.h"
#include "tests/app/agents/AgentRunnerFixture.h"
#include "tests/app/agents/HeldReports.h"

namespace morvex {
namespace {

using testing::ElementsAre;

/// The rows of the tools among agents that the test plays, and a phone that may take nothing.
class AgentToolRowsTest : public AgentRunnerFixture {
  protected:
    AgentToolRowsTest() {
        auto always = [] { return true; };
        tools.addTo(table, {always, always, always});
    }

    ~AgentToolRowsTest() override {
        reports.release();
        EXPECT_TRUE(executor.run(scope.join()));
    }

    ToolOutcome call(const std::string& tool, const boost::json::object& arguments) {
        auto outcome = executor.run(table.find(tool)->run({tool, arguments, "r1"}));
        EXPECT_TRUE(outcome);
        return outcome.value();
    }

    ToolOutcome rename(const boost::json::object& arguments) { return call("mac.agent.rename", arguments); }

    /// From now on the test plays `--version` too.
    void holdDetection() { version.reset(); }

    void acceptRun() {
        EXPECT_TRUE(call("mac.codex.run", {{"instruction", "Oprav testy"}}).ok);
        executor.runUntilIdle();
    }

    [[nodiscard]] const UkolAgenta& ukol() const { return historie->polozky().front(); }

    ScriptedRandom random;
    ImmediateExecutor saving;
    ScriptedUrlOpener opener;
    std::unique_ptr<HistorieAgentu> historie =
        HistorieAgentu::create(folder.path() / "data", {{saving, saving, clock}, random, opener});
    FixedFolders standard;
    std::vector<std::string> folders{path("work")};
    HeldReports reports;
    TaskScope scope{executor};
    AgentTools tools{runner,
                     *historie,
                     reports,
                     {[this] { return AllowedFolders(folders, standard).aliasy(); },
                      [this](const std::optional<std::string>& alias) {
                          return AllowedFolders(folders, standard).slozkaProAlias(alias);
                      },
                      [](const std::string&) { return true; }},
                     scope};
    ToolTable table;
};

TEST_F(AgentToolRowsTest, WithoutAnAllowedFolderSayWhereToAddOne) {
    folders.clear();
    for (const char* tool : {"mac.codex.run", "mac.claude.run"}) {
        auto outcome = call(tool, {{"instruction", "x"}});
        EXPECT_FALSE(outcome.ok);
        EXPECT_EQ(
            outcome.result,
            (boost::json::object{{"error", "Na Macu není povolená žádná složka. Přidej ji v okně Morvex."}}));
    }
    EXPECT_TRUE(historie->polozky().empty());
}

TEST_F(AgentToolRowsTest, ProgressGoesOutBeforeTheEndOfTheTaskHoweverSlowTheLinkIs) {
    acceptRun();
    reports.isHeld = true;
    reports.sent.clear();
    const std::string command = R"({"type":"item.started","item":{"type":"command_execution","command":")";
    for (int i = 0; i < 1000; ++i) say(command + std::to_string(i) + "\"}}");
    say(R"({"type":"turn.completed","text":"Hotovo."})");
    finish();
    EXPECT_EQ(ukol().stav, UkolAgenta::Stav::hotovo) << "the end is recorded at once";
    EXPECT_THAT(reports.sent, ElementsAre("progress r1: Spouštím: 0"));
    EXPECT_TRUE(tools.currentTask());
    EXPECT_FALSE(call("mac.codex.run", {{"instruction", "Další"}}).ok) << "busy until the phone was told";

    reports.release();
    executor.runUntilIdle();
    const auto& sent = reports.sent;
    ASSERT_EQ(sent.size(), 2 * (1 + AgentNews::mostWaiting) + 2);
    EXPECT_THAT((std::vector(sent.end() - 4, sent.end())),
                ElementsAre("progress r1: Spouštím: 999", "status", "task completed 2", "status"));
    EXPECT_FALSE(tools.currentTask());
    acceptRun();
    finish();
}

TEST_F(AgentToolRowsTest, TheLastStatusOfATaskIsOfAComputerThatIsFree) {
    std::vector<std::pair<std::string, bool>> busy;
    reports.whenSent = [&](const std::string& word) {
        busy.emplace_back(word, tools.currentTask().has_value());
    };
    acceptRun();
    finish();
    EXPECT_THAT(busy, ElementsAre(std::pair{"task in_progress 1", true}, std::pair{"status", true},
                                  std::pair{"task completed 2", true}, std::pair{"status", false}));
}

TEST_F(AgentToolRowsTest, AnAgentThatPrintsWithoutPauseLeavesOneSendAndABoundedWait) {
    acceptRun();
    reports.isHeld = true;
    const auto before = scope.live();
    for (int i = 0; i < 1000; ++i)
        say(R"({"type":"item.started","item":{"type":"command_execution","command":"ls"}})");
    EXPECT_EQ(scope.live(), before + 1);
    reports.release();
    finish();
}

TEST_F(AgentToolRowsTest, AStopDuringThePreparationIsKeptAndNoAgentStarts) {
    holdDetection();
    acceptRun();
    const auto launched = launches();
    EXPECT_FALSE(tools.zastavit(random.uuid())) << "another task";
    EXPECT_TRUE(tools.zastavit(ukol().workItemID));
    EXPECT_EQ(child().signals, std::vector{ChildSignal::terminate}) << "the detection ends too";
    finish(15);
    EXPECT_EQ(launches(), launched);
    EXPECT_EQ(ukol().stav, UkolAgenta::Stav::preruseno);
    EXPECT_EQ(reports.sent.back(), "status");
    EXPECT_FALSE(tools.zastavit(ukol().workItemID));
}

TEST_F(AgentToolRowsTest, ACancelOfThePhoneDuringThePreparationStopsTheTaskAndSaysSo) {
    for (const char* cancel : {"mac.codex.cancel", "mac.claude.cancel"}) {
        holdDetection();
        acceptRun();
        const auto launched = launches();
        EXPECT_EQ(call(cancel, {}).result,
                  (boost::json::object{{"cancelled", true}, {"message", "Zastaveno."}}));
        EXPECT_EQ(child().signals, std::vector{ChildSignal::terminate}) << "the detection ends too";
        finish(15);
        EXPECT_EQ(launches(), launched);
        EXPECT_EQ(ukol().stav, UkolAgenta::Stav::preruseno);
        EXPECT_EQ(call(cancel, {}).result,
                  (boost::json::object{{"cancelled", false}, {"message", "Nic neběželo."}}));
    }
}

TEST_F(AgentToolRowsTest, ACancelBeforeTheAgentIsLookedForLetsNothingStart) {
    reports.isHeld = true;
    acceptRun();
    EXPECT_EQ(call("mac.codex.cancel", {}).result.at("message"), "Zastaveno.");
    reports.release();
    executor.runUntilIdle();
    for (const auto& one : programs.programs) EXPECT_FALSE(one.binary.ends_with("/codex"));
    EXPECT_EQ(ukol().stav, UkolAgenta::Stav::preruseno);
}

TEST_F(AgentToolRowsTest, ACancelAfterTheAgentHasExitedChangesNothingAndSaysSo) {
    acceptRun();
    child().listener->exited(0);
    EXPECT_EQ(call("mac.codex.cancel", {}).result.at("message"), "Nic neběželo.");
    EXPECT_FALSE(tools.zastavit(ukol().workItemID));
    child().listener->ended();
    executor.runUntilIdle();
    EXPECT_EQ(ukol().stav, UkolAgenta::Stav::hotovo);
}

TEST_F(AgentToolRowsTest, AStopAfterTheRecordedEndStopsNothing) {
    acceptRun();
    reports.isHeld = true;
    finish();
    EXPECT_TRUE(tools.currentTask()) << "the phone is still being told";
    EXPECT_FALSE(tools.zastavit(ukol().workItemID));
}

TEST_F(AgentToolRowsTest, ALinkThatTakesNothingDelaysTheStartOfTheAgentAndTheNextRun) {
    reports.isHeld = true;
    acceptRun();
    EXPECT_EQ(launches(), 0U);
    EXPECT_FALSE(call("mac.codex.run", {{"instruction", "Další"}}).ok);
    reports.release();
    executor.runUntilIdle();
    EXPECT_TRUE(runner.bezici());
    finish();
}

TEST_F(AgentToolRowsTest, RenamingAnswersWithTheNameThatWasKept) {
    acceptRun();
    finish();
    auto outcome = rename({{"title", std::string(HistorieAgentu::longestText + 1, 'x')}});
    EXPECT_EQ(ukol().nazev.size(), HistorieAgentu::longestText + std::string("…").size());
    EXPECT_EQ(outcome.result.at("title").as_string(), ukol().nazev);
    EXPECT_EQ(outcome.result.at("message").as_string(), "Relace se v Morvex jmenuje " + ukol().nazev + ".");
}

TEST_F(AgentToolRowsTest, ABlankArgumentOfARenamingCountsAsAbsent) {
    acceptRun();
    finish();
    EXPECT_TRUE(rename({{"title", "1"}, {"agent", ""}, {"folder", " "}, {"work_item_id", ""}}).ok);
    EXPECT_TRUE(rename({{"title", "2"}, {"agent", " Codex "}, {"folder", " WORK\n"}}).ok);
    EXPECT_FALSE(rename({{"title", "3"}, {"folder", "jiná"}}).ok);
}

TEST_F(AgentToolRowsTest, ARenamingAndARunKnowAFolderByTheSameName) {
    std::filesystem::create_directories(path("other/work"));
    folders.push_back(path("other/work"));
    for (const char* folder : {"other/work", "work"}) {
        EXPECT_TRUE(call("mac.codex.run", {{"instruction", "Oprav testy"}, {"folder", folder}}).ok);
        executor.runUntilIdle();
        finish();
    }
    EXPECT_TRUE(rename({{"title", "Druhá"}, {"folder", "Other/Work"}}).ok);
    EXPECT_EQ(historie->polozky().back().nazev, "Druhá");
    EXPECT_EQ(historie->polozky().back().slozka, path("other/work"));
}

TEST_F(AgentToolRowsTest, AHugeIdOfACallIsKeptToItsBeginning) {
    const ToolCall huge{"mac.codex.run", {{"instruction", "Oprav testy"}}, std::string(1'000'000, 'r')};
    ASSERT_TRUE(executor.run(table.find("mac.codex.run")->run(huge)));
    EXPECT_EQ(runner.bezici()->requestID, std::string(512, 'r'));
    finish();
}

TEST_F(AgentToolRowsTest, AtTheEndOfTheProgramOnlyACancelIsLeftForTheNextStart) {
    struct Row {
        const char* name;
        bool isOver; ///< before the program ends
        std::int32_t status;
        UkolAgenta::Stav stav;
    };

    const std::vector<Row> rows{{"good", true, 0, UkolAgenta::Stav::hotovo},
                                {"failed", true, 1, UkolAgenta::Stav::chyba},
                                {"stopped", false, 15, UkolAgenta::Stav::bezi}};
    for (const auto& row : rows) {
        TaskScope ending(executor);
        AgentRunner agent({programs, clock, discovery, executor, executor}, ending.token());
        AgentTools own(agent, *historie, reports,
                       {[this] { return AllowedFolders(folders, standard).aliasy(); },
                        [this](const std::optional<std::string>&) { return std::optional(path("work")); },
                        [](const std::string&) { return true; }},
                       ending);
        ToolTable rowsOfOwn;
        own.addTo(rowsOfOwn, {[] { return true; }, [] { return true; }, [] { return true; }});
        auto begun = executor.run(
            rowsOfOwn.find("mac.codex.run")->run({"mac.codex.run", {{"instruction", row.name}}, "r1"}));
        ASSERT_TRUE(begun && begun->ok) << row.name;
        auto* listener = child().listener;
        if (row.isOver) listener->exited(row.status);
        ending.stop();
        if (!row.isOver) listener->exited(row.status);
        listener->ended();
        EXPECT_TRUE(executor.run(ending.join())) << row.name;
        EXPECT_EQ(ukol().nazev, row.name);
        EXPECT_EQ(ukol().stav, row.stav) << row.name;
    }
}

} // namespace
} // namespace morvex
