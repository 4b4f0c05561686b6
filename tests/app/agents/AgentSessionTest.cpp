#include "shared/base/SystemError.h"
#include "shared/wire/Json.h"
#include "shared/wire/TalkSpanError.h"
#include "tests/app/agents/AgentRunnerFixture.h"

#include <cerrno>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

const std::string newSession = "Předchozí relace už neexistuje, zakládám novou.";

/// What the runner does with sessions.
class AgentSessionTest : public AgentRunnerFixture {
  protected:
    /// The session that the latest launch of Codex continues.
    std::optional<std::string> resumed() {
        auto args = program().args;
        auto word = std::ranges::find(args, "resume");
        return word == args.end() ? std::nullopt : std::optional(*(word + 1));
    }

    const std::vector<std::string> noIds{"--dangerous", "-", "", "a\nb", std::string(513, 'x')};

    void remember(const std::string& id, const Assignment& given) {
        begin(given);
        say(R"({"type":"thread.started","thread_id":")" + id + "\"}");
        finish();
    }
};

TEST_F(AgentSessionTest, AWishToStopTouchesNoRunningAgentAndLetsNoSecondOneStart) {
    std::stop_source wish;
    auto given = task("codex", "t0");
    given.cancellation = wish.get_token();
    auto outcome = begin(std::move(given));
    const auto before = launches();
    wish.request_stop();
    EXPECT_TRUE(child().signals.empty());
    finish(1, "thread not found");
    EXPECT_EQ(launches(), before);
    EXPECT_TRUE(failedAs<TalkSpanError::Cancelled>(outcome));
}

TEST_F(AgentSessionTest, AFolderThatWasRemovedMeanwhileIsNotWorkedInAgain) {
    bool isAllowed = true;
    auto given = task("codex", "t0");
    given.isAllowed = [&] { return isAllowed; };
    auto outcome = begin(std::move(given));
    const auto before = launches();
    isAllowed = false;
    EXPECT_TRUE(child().signals.empty()) << "the agent that runs goes on";
    finish(1, "thread not found");
    EXPECT_EQ(launches(), before);
    EXPECT_EQ(failure(outcome), "Složka " + path("work") + " už není povolená.");
}

TEST_F(AgentSessionTest, TheCallersSessionIsContinuedJustBeforeTheInstruction) {
    begin(task("codex", "t0"));
    auto args = program().args;
    ASSERT_EQ(args.size(), 10U);
    EXPECT_THAT((std::vector(args.end() - 3, args.end())), ElementsAre("resume", "t0", "Oprav to."));
    finish();
}

TEST_F(AgentSessionTest, TheMemoryOfThisRunOutranksTheCaller) {
    remember("t1", task());
    begin(task("codex", "t0"));
    EXPECT_EQ(resumed(), "t1");
    finish();
}

TEST_F(AgentSessionTest, ASessionBelongsToItsAgentAndFolder) {
    remember("t1", task());
    std::filesystem::create_directories(path("other"));
    auto elsewhere = task();
    elsewhere.slozka = path("other");
    begin(elsewhere);
    EXPECT_EQ(resumed(), std::nullopt);
    finish();
    begin(task("claude-code"));
    EXPECT_THAT(program().args, testing::Not(testing::Contains("--resume")));
    finish();
    begin(task());
    EXPECT_EQ(resumed(), "t1");
    finish();
}

TEST_F(AgentSessionTest, TheSessionOfAFailedRunIsRemembered) {
    begin(task());
    say(R"({"type":"thread.started","thread_id":"t1"})");
    finish(1);
    begin(task());
    EXPECT_EQ(resumed(), "t1");
    finish();
}

TEST_F(AgentSessionTest, HoweverARunEndsItsSessionIsRemembered) {
    const std::pair<std::string, std::function<void()>> ends[] = {
        {"cancel", [this] { EXPECT_TRUE(runner.zrus()); }},
        {"limit", [this] { clock.advance(900s); }},
        {"error", [this] { say(R"({"type":"error","message":"Došel kredit."})"); }},
    };
    for (const auto& [session, end] : ends) {
        auto outcome = begin(task());
        say(R"({"type":"thread.started","thread_id":")" + session + "\"}");
        end();
        finish(15);
        EXPECT_NE(failure(outcome), "") << session;
        begin(task());
        EXPECT_EQ(resumed(), session);
        finish();
    }
}

TEST_F(AgentSessionTest, ARunThatTellsNoSessionLeavesTheMemory) {
    remember("t1", task());
    begin(task());
    finish();
    begin(task());
    EXPECT_EQ(resumed(), "t1");
    finish();
}

TEST_F(AgentSessionTest, ASessionThatWouldBeReadAsAnOptionIsNotContinued) {
    for (const auto& id : noIds) {
        begin(task("codex", id));
        EXPECT_EQ(resumed(), std::nullopt);
        finish();
    }
}

TEST_F(AgentSessionTest, WhatIsNoNameOfASessionIsNotCollected) {
    begin(task());
    say(R"({"type":"thread.started","thread_id":"t1"})");
    for (const auto& id : noIds) say(encode(boost::json::object{{"type", "x"}, {"thread_id", id}}));
    EXPECT_THAT(sessions, ElementsAre("t1"));
    finish();
    begin(task());
    EXPECT_EQ(resumed(), "t1");
    finish();
}

TEST_F(AgentSessionTest, ASessionThatIsGoneIsReplacedByANewOneOnce) {
    auto outcome = begin(task("codex", "t0"));
    clock.advance(800s);
    auto before = launches();
    finish(1, "Error: Thread Not Found\n");
    EXPECT_THAT(heard, ElementsAre(newSession));
    EXPECT_EQ(launches(), before + 1);
    EXPECT_EQ(resumed(), std::nullopt);
    EXPECT_EQ(program().cwd, path("work"));
    EXPECT_EQ(clock.untilNext(), 900s) << "the second run has a limit of its own";
    EXPECT_FALSE(outcome->has_value());
    say(R"({"type":"thread.started","thread_id":"t1"})");
    say(R"({"type":"turn.completed","text":"Hotovo."})");
    finish();
    EXPECT_EQ(outcome->value().value(), (Vysledek{"Hotovo.", "t1"}));
}

TEST_F(AgentSessionTest, ARememberedSessionThatIsGoneIsForgotten) {
    remember("t1", task());
    begin(task());
    finish(1, "no such thread");
    finish(1, "out of money");
    begin(task());
    EXPECT_EQ(resumed(), std::nullopt);
    finish();
}

TEST_F(AgentSessionTest, NothingOfTheFirstRunStandsInTheOutcomeOfTheSecond) {
    auto outcome = begin(task("codex", "t0"));
    say(R"({"type":"thread.started","thread_id":"old"})");
    say(R"({"type":"turn.completed","text":"Staré."})");
    finish(1, "invalid session");
    finish();
    EXPECT_EQ(outcome->value().value(), (Vysledek{"Nástroj nevrátil žádný text.", {}}));
}

TEST_F(AgentSessionTest, TheSecondRunIsTheLast) {
    auto outcome = begin(task("codex", "t0"));
    finish(1, "session not found");
    auto before = launches();
    finish(1, "session not found");
    EXPECT_EQ(launches(), before);
    EXPECT_EQ(failure(outcome), "codex skončil chybou: session not found");
}

TEST_F(AgentSessionTest, TheSameWordsWithoutASessionAreAnOrdinaryFailure) {
    auto outcome = begin(task());
    finish(1, "thread not found");
    EXPECT_EQ(failure(outcome), "codex skončil chybou: thread not found");
    EXPECT_TRUE(heard.empty());
}

TEST_F(AgentSessionTest, AGoodRunIsNotRepeatedWhateverItWritesToStandardError) {
    auto outcome = begin(task("codex", "t0"));
    finish(0, "thread not found");
    EXPECT_TRUE(outcome->value().has_value());
    EXPECT_TRUE(heard.empty());
}

TEST_F(AgentSessionTest, TheRetryLooksAtStandardErrorAlone) {
    auto outcome = begin(task("codex", "t0"));
    say(R"({"type":"error","message":"thread not found"})");
    finish(1);
    EXPECT_EQ(failure(outcome), "codex skončil chybou: thread not found");
    EXPECT_TRUE(heard.empty());
}

TEST_F(AgentSessionTest, TheWordsOfAGoneSessionSurviveNoiseBeforeThem) {
    begin(task("codex", "t0"));
    for (int i = 0; i < 1000; ++i) child().listener->errors(std::string(1000, 'x'));
    finish(1, "thread not found\n");
    EXPECT_THAT(heard, ElementsAre(newSession));
    finish();
}

TEST_F(AgentSessionTest, ARunIsRepeatedAlsoAfterACancel) {
    auto outcome = begin(task("codex", "t0"));
    EXPECT_TRUE(runner.zrus());
    finish(0, "thread not found");
    EXPECT_THAT(heard, ElementsAre(newSession));
    say(R"({"type":"turn.completed","text":"Přesto."})");
    finish();
    EXPECT_EQ(outcome->value().value().text, "Přesto.");
}

TEST_F(AgentSessionTest, ARunIsRepeatedAlsoAfterItsLimit) {
    auto outcome = begin(task("codex", "t0"));
    clock.advance(900s);
    finish(0, "thread not found");
    EXPECT_THAT(heard, ElementsAre(newSession));
    finish();
    EXPECT_TRUE(outcome->value().has_value());
}

TEST_F(AgentSessionTest, TheSecondRunCanBeCancelled) {
    auto outcome = begin(task("codex", "t0"));
    finish(1, "thread not found");
    EXPECT_TRUE(runner.zrus());
    finish(15);
    EXPECT_TRUE(failedAs<TalkSpanError::Cancelled>(outcome));
}

TEST_F(AgentSessionTest, NothingIsRepeatedAtTheEndOfTheProgram) {
    auto outcome = begin(task("codex", "t0"));
    stop.request_stop();
    auto before = launches();
    finish(15, "thread not found");
    EXPECT_EQ(launches(), before);
    EXPECT_TRUE(failedAs<TalkSpanError::Cancelled>(outcome));
}

TEST_F(AgentSessionTest, ASecondRunThatCannotBeLaunchedLeavesNoTask) {
    auto outcome = begin(task("codex", "t0"));
    programs.problems.emplace(path("bin/codex"), SystemError{ENOEXEC});
    finish(1, "thread not found");
    EXPECT_EQ(failure(outcome),
              "codex skončil chybou: Nepodařilo se spustit: " + SystemError{ENOEXEC}.popis().czech());
    EXPECT_EQ(runner.bezici(), nullptr);
    EXPECT_FALSE(runner.zrus());
}

TEST_F(AgentSessionTest, TheTaskStaysTheSameOverBothRuns) {
    begin(task("codex", "t0"));
    auto began = clock.now();
    clock.advance(10s);
    finish(1, "thread not found");
    EXPECT_EQ(runner.bezici()->zacatek, began);
    EXPECT_EQ(failure(begin(task())), "Už běží jiný úkol: codex. Počkej, nebo ho zruš.");
    finish();
}

TEST_F(AgentSessionTest, ClaudeCodeContinuesInTheSameWay) {
    auto outcome = begin(task("claude-code", "s0"));
    auto args = program().args;
    auto word = std::ranges::find(args, "--resume");
    ASSERT_NE(word, args.end());
    EXPECT_EQ(*(word + 1), "s0");
    finish(1, "No conversation found with session ID: s0");
    EXPECT_THAT(program().args, testing::Not(testing::Contains("--resume")));
    say(R"({"type":"result","session_id":"s1","result":"Hotovo."})");
    finish();
    EXPECT_EQ(outcome->value().value(), (Vysledek{"Hotovo.", "s1"}));
}

} // namespace
} // namespace morvex
