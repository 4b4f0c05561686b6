#include "shared/base/SystemError.h"
#include "shared/wire/TalkSpanError.h"
#include "tests/app/agents/AgentRunnerFixture.h"

#include <cerrno>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

using AgentRunnerTest = AgentRunnerFixture;

TEST_F(AgentRunnerTest, RunsCodexInItsFolderWithTheEnvironmentOfATool) {
    auto outcome = begin(task());
    EXPECT_EQ(program().binary, path("bin/codex"));
    EXPECT_THAT(program().args, ElementsAre("exec", "--json", "--cd", path("work"), "--skip-git-repo-check",
                                            "--sandbox", "workspace-write", "Oprav to."));
    EXPECT_EQ(program().cwd, path("work"));
    EXPECT_EQ(program().env.at("NO_COLOR"), "1");
    EXPECT_EQ(program().env.at("LANG"), "C");
    EXPECT_TRUE(program().env.at("PATH").starts_with(path("bin") + ":"));
    finish();
    EXPECT_TRUE(outcome->value().has_value());
}

TEST_F(AgentRunnerTest, RunsClaudeCodeInItsFolderAsTheWorkingDirectory) {
    begin(task("claude-code"));
    EXPECT_EQ(program().binary, path("bin/claude"));
    EXPECT_EQ(program().args.front(), "-p");
    EXPECT_EQ(program().cwd, path("work"));
    finish();
}

TEST_F(AgentRunnerTest, GivesTheFinalTextAndTheSession) {
    auto outcome = begin(task());
    say(R"({"type":"thread.started","thread_id":"t1"})");
    say(R"({"type":"item.completed","item":{"type":"agent_message","text":"Dívám se."}})");
    say(R"({"type":"turn.completed","text":"Hotovo."})");
    finish();
    EXPECT_EQ(outcome->value().value(), (Vysledek{"Hotovo.", "t1"}));
}

TEST_F(AgentRunnerTest, WithoutAFinalAnswerTheLastTextIsIt) {
    auto outcome = begin(task());
    say(R"({"type":"item.completed","item":{"type":"agent_message","text":"První."}})");
    say(R"({"type":"item.completed","item":{"type":"agent_message","text":"Druhý."}})");
    say(R"({"type":"turn.completed","text":""})");
    finish();
    EXPECT_EQ(outcome->value().value(), (Vysledek{"Druhý.", {}}));
}

TEST_F(AgentRunnerTest, ARunWithoutAnyTextSaysSo) {
    auto outcome = begin(task());
    say("no event");
    finish();
    EXPECT_EQ(outcome->value().value(), (Vysledek{"Nástroj nevrátil žádný text.", {}}));
}

TEST_F(AgentRunnerTest, StandardErrorOfAGoodRunIsIgnored) {
    auto outcome = begin(task());
    say(R"({"type":"turn.completed","text":"Hotovo."})");
    finish(0, "warning: thread not found");
    EXPECT_EQ(outcome->value().value().text, "Hotovo.");
}

TEST_F(AgentRunnerTest, ShowsTheRunningTask) {
    auto given = task("claude-code");
    given.workItemID = Uuid::parse("6ba7b810-9dad-11d1-80b4-00c04fd430c8");
    EXPECT_EQ(runner.bezici(), nullptr);
    begin(given);
    ASSERT_NE(runner.bezici(), nullptr);
    EXPECT_EQ(*runner.bezici(), (Bezici{"r1", given.workItemID, "claude-code", clock.now(), {}}));
    say(R"({"type":"system","subtype":"init","session_id":"s1"})");
    EXPECT_EQ(runner.bezici()->prubeh, "Relace navázána.");
    finish();
    EXPECT_EQ(runner.bezici(), nullptr);
}

TEST_F(AgentRunnerTest, ATaskBeginsWhenItsAgentWasFound) {
    version.reset();
    begin(task());
    clock.advance(5s);
    finish();
    ASSERT_NE(runner.bezici(), nullptr);
    EXPECT_EQ(runner.bezici()->zacatek, clock.now());
    finish();
}

TEST_F(AgentRunnerTest, TellsProgressInOrderAndBeforeTheEnd) {
    auto outcome = begin(task());
    child().listener->output("{\"type\":\"thread.started\",\"thread_id\":\"t1\"}\n"
                             R"({"type":"item.started","item":{"type":"command_execution","command":"ls"}})");
    child().listener->exited(0);
    child().listener->ended();
    EXPECT_TRUE(heard.empty()) << "the output thread calls nobody";
    executor.runUntilIdle();
    EXPECT_THAT(heard, ElementsAre("Relace navázána.", "Spouštím: ls"));
    EXPECT_THAT(sessions, ElementsAre("t1"));
    EXPECT_TRUE(outcome->has_value());
}

TEST_F(AgentRunnerTest, ProgressThatComesAfterTheEndIsStillPassedOn) {
    auto outcome = begin(task());
    runner.zrus();
    auto* listener = child().listener;
    listener->exited(15);
    listener->ended();
    listener->output("{\"type\":\"thread.started\"}\n");
    executor.runUntilIdle();
    EXPECT_TRUE(outcome->has_value());
    EXPECT_EQ(runner.bezici(), nullptr);
    EXPECT_THAT(heard, ElementsAre("Relace navázána."));
}

TEST_F(AgentRunnerTest, TellsASessionOnceWhileItStaysTheSame) {
    begin(task("claude-code", "s0"));
    for (const char* id : {"s0", "s0", "s1", "s1", ""})
        say(R"({"type":"user","session_id":")" + std::string(id) + "\"}");
    EXPECT_THAT(sessions, ElementsAre("s0", "s1"));
    finish();
}

TEST_F(AgentRunnerTest, ASecondStartWhileCodexRunsIsRefusedWithItsName) {
    auto first = begin(task());
    auto before = launches();
    EXPECT_EQ(failure(begin(task("claude-code"))), "Už běží jiný úkol: codex. Počkej, nebo ho zruš.");
    EXPECT_EQ(failure(begin(task("no such tool"))), "Už běží jiný úkol: codex. Počkej, nebo ho zruš.");
    EXPECT_EQ(launches(), before);
    finish();
    EXPECT_TRUE(first->value().has_value());
    begin(task("claude-code"));
    EXPECT_NE(runner.bezici(), nullptr);
    finish();
}

TEST_F(AgentRunnerTest, ATaskThatBeganDuringTheDetectionOfAnotherWins) {
    auto first = start(task());
    auto other = task();
    other.requestID = "r2";
    auto second = start(other);
    executor.runUntilIdle();
    EXPECT_EQ(runner.bezici()->requestID, "r1");
    EXPECT_EQ(failure(second), "Už běží jiný úkol: codex. Počkej, nebo ho zruš.");
    say(R"({"type":"turn.completed","text":"Hotovo."})");
    finish();
    EXPECT_EQ(first->value().value().text, "Hotovo.");
}

TEST_F(AgentRunnerTest, RefusesBeforeAnythingRuns) {
    std::ofstream(path("file")) << "x";

    struct Case {
        std::string tool;
        std::string instruction;
        std::string folder;
        std::string sentence;
    };

    const std::vector<Case> cases = {
        {"vim", "", "/nonexistent", "Nástroj vim neznám."},
        {"codex", "", "/nonexistent", "Prázdné zadání."},
        {"codex", " \t\r\n ", "/nonexistent", "Prázdné zadání."},
        {"codex", "x", "/nonexistent", "Složka /nonexistent neexistuje."},
        {"codex", "x", path("file"), "Složka " + path("file") + " neexistuje."},
    };
    for (const auto& [tool, instruction, wanted, sentence] : cases) {
        auto given = task(tool);
        given.instrukce = instruction;
        given.slozka = wanted;
        auto outcome = begin(given);
        EXPECT_EQ(failure(outcome), sentence);
        EXPECT_NE((**outcome).error().as<AgentChyba>(), nullptr);
        EXPECT_EQ(runner.bezici(), nullptr);
    }
    EXPECT_EQ(launches(), 0U);
}

TEST_F(AgentRunnerTest, AnAgentThatIsNotInstalledIsRefusedWithTheProblem) {
    auto outcome = begin(task("rare"));
    EXPECT_THAT(failure(outcome), testing::StartsWith("Binárku „morvex-rare-agent“ jsem nenašel"));
    EXPECT_TRUE((**outcome).error().as<AgentChyba>());
}

TEST_F(AgentRunnerTest, AnAgentThatGoesAfterItsDetectionIsRefusedInGeneralWords) {
    install("morvex-rare-agent");
    version.reset();
    auto outcome = begin(task("rare"));
    uninstall("morvex-rare-agent");
    child().listener->output("1.0\n");
    finish();
    EXPECT_EQ(failure(outcome), "Nástroj rare není nainstalovaný.");
}

TEST_F(AgentRunnerTest, AnAgentWithoutALoginIsRunAllTheSame) {
    login = Answer{.status = 1};
    auto outcome = begin(task("claude-code"));
    say(R"({"type":"result","result":"Hotovo."})");
    finish();
    EXPECT_EQ(outcome->value().value().text, "Hotovo.");
}

TEST_F(AgentRunnerTest, AFailedLaunchLeavesNoTask) {
    programs.problems.emplace(path("bin/codex"), SystemError{ENOEXEC});
    auto outcome = begin(task());
    EXPECT_EQ(failure(outcome),
              "codex skončil chybou: Nepodařilo se spustit: " + SystemError{ENOEXEC}.popis().czech());
    EXPECT_EQ(runner.bezici(), nullptr);
    EXPECT_FALSE(runner.zrus());
}

TEST_F(AgentRunnerTest, ACancelStopsInTwoStages) {
    auto outcome = begin(task());
    EXPECT_TRUE(runner.zrus());
    clock.advance(4s);
    EXPECT_THAT(child().signals, ElementsAre(ChildSignal::terminate, ChildSignal::kill));
    finish(9);
    EXPECT_TRUE(failedAs<TalkSpanError::Cancelled>(outcome));
    EXPECT_EQ(failure(outcome), "Zrušeno.");
}

TEST_F(AgentRunnerTest, ACancelFindsNothingBeforeTheRunAndAfterIt) {
    EXPECT_FALSE(runner.zrus());
    version.reset();
    begin(task());
    EXPECT_FALSE(runner.zrus()) << "only the version is asked";
    finish();
    EXPECT_NE(runner.bezici(), nullptr);
    finish();
    EXPECT_FALSE(runner.zrus());
}

TEST_F(AgentRunnerTest, TheLimitIsFifteenMinutes) {
    auto outcome = begin(task());
    clock.advance(900s - 1ns);
    EXPECT_TRUE(child().signals.empty());
    clock.advance(1ns);
    EXPECT_THAT(child().signals, ElementsAre(ChildSignal::terminate));
    finish(15);
    EXPECT_TRUE(failedAs<TalkSpanError::TimedOut>(outcome));
    EXPECT_EQ(failure(outcome), "Operace překročila limit 900 vteřin a byla zastavena.");
}

TEST_F(AgentRunnerTest, AnErrorOfTheAgentEndsItBySigtermAlone) {
    auto outcome = begin(task());
    say(R"({"type":"error","message":"Došel kredit."})");
    EXPECT_THAT(child().signals, ElementsAre(ChildSignal::terminate));
    clock.advance(10s);
    EXPECT_THAT(child().signals, ElementsAre(ChildSignal::terminate)) << "there is no second stage";
    finish(15);
    EXPECT_EQ(failure(outcome), "codex skončil chybou: Došel kredit.");
}

TEST_F(AgentRunnerTest, AnErrorWithoutWordsEndsTheAgentTooAndSaysNothingOfItsOwn) {
    for (const auto& [errors, words] :
         {std::pair{" kvóta\n", "kvóta"}, std::pair{"", "Proces skončil s kódem 15."}}) {
        auto outcome = begin(task());
        say(R"({"type":"error","message":""})");
        EXPECT_THAT(child().signals, ElementsAre(ChildSignal::terminate));
        finish(15, errors);
        EXPECT_EQ(failure(outcome), "codex skončil chybou: " + std::string(words));
    }
    auto outcome = begin(task());
    say(R"({"type":"error","message":""})");
    finish(0);
    EXPECT_EQ(outcome->value().value().text, "Nástroj nevrátil žádný text.");
}

TEST_F(AgentRunnerTest, AnErrorInTheLastWordsOfAnEndedAgentSignalsNobody) {
    auto outcome = begin(task());
    child().listener->exited(0);
    say(R"({"type":"error","message":"Došel kredit."})");
    EXPECT_TRUE(child().signals.empty());
    child().listener->ended();
    executor.runUntilIdle();
    EXPECT_EQ(failure(outcome), "codex skončil chybou: Došel kredit.");
}

TEST_F(AgentRunnerTest, TellsOneOutcomeInTheirOrder) {
    struct Case {
        bool cancelled;
        bool tooLong;
        std::string error;
        std::int32_t status;
        std::string errors;
        std::string sentence;
    };

    const std::vector<Case> cases = {
        {true, true, "chyba", 1, "stderr", "Zrušeno."},
        {false, true, "chyba", 1, "stderr", "Operace překročila limit 900 vteřin a byla zastavena."},
        {false, false, "chyba", 1, "stderr", "codex skončil chybou: chyba"},
        {false, false, "chyba", 0, "", "codex skončil chybou: chyba"},
        {false, false, "", 1, " \n stderr\n", "codex skončil chybou: stderr"},
        {false, false, "", 7, " \n", "codex skončil chybou: Proces skončil s kódem 7."},
    };
    for (const auto& [cancelled, tooLong, error, status, errors, sentence] : cases) {
        auto outcome = begin(task());
        say(R"({"type":"turn.completed","text":"Hotovo."})");
        if (cancelled) runner.zrus();
        if (tooLong) clock.advance(900s);
        if (!error.empty()) say(R"({"type":"error","message":")" + error + "\"}");
        finish(status, errors);
        EXPECT_EQ(failure(outcome), sentence);
    }
}

TEST_F(AgentRunnerTest, KeepsTheEndOfStandardErrorWhereTheCauseStands) {
    auto outcome = begin(task());
    for (int i = 0; i < 1000; ++i) child().listener->errors(std::string(1000, 'x'));
    finish(1, "došel kredit");
    const std::string cause = "došel kredit";
    EXPECT_EQ(failure(outcome),
              "codex skončil chybou: " + std::string(64UL * 1024 - cause.size(), 'x') + cause);
}

TEST_F(AgentRunnerTest, TheEndOfTheProgramEndsTheTaskAndLetsNoneStart) {
    auto outcome = begin(task());
    stop.request_stop();
    EXPECT_THAT(child().signals, ElementsAre(ChildSignal::terminate));
    finish(15);
    EXPECT_TRUE(failedAs<TalkSpanError::Cancelled>(outcome));
    auto before = launches();
    EXPECT_TRUE(failedAs<TalkSpanError::Cancelled>(begin(task())));
    EXPECT_EQ(launches(), before);
}

TEST_F(AgentRunnerTest, TheEndOfTheProgramEndsADetectionToo) {
    version.reset();
    auto outcome = begin(task());
    stop.request_stop();
    EXPECT_THAT(child().signals, ElementsAre(ChildSignal::terminate));
    finish(15);
    EXPECT_TRUE(failedAs<TalkSpanError::Cancelled>(outcome));
}

} // namespace
} // namespace morvex
