#include "app/programs/ProcessRunner.h"

#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedPrograms.h"
#include "shared/base/SystemError.h"
#include "shared/wire/TalkSpanError.h"
#include "tests/support/HeardLog.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace morvex {
namespace {

using namespace std::chrono_literals;

/// A run whose program the test plays.
class ProcessRunnerTest : public testing::Test {
  protected:
    void begin(Capture capture = {}, bool withCallback = true) {
        NaRadek callback = [this](std::string_view line) { lines.emplace_back(line); };
        executor.start(store(runner.spustit({.binary = "/bin/tool", .args = {"a"}}, 30s,
                                            withCallback ? callback : NaRadek{}, capture)));
        executor.runUntilIdle();
    }

    Task<void> store(Task<Result<VysledekProcesu>> task) { result = co_await std::move(task); }

    ScriptedPrograms::Child& child() { return *programs.children.back(); }

    void say(std::string_view chunk) { child().listener->output(chunk); }

    void exit(std::int32_t status = 0) { child().listener->exited(status); }

    VysledekProcesu end() {
        child().listener->ended();
        executor.runUntilIdle();
        return result.value().value();
    }

    VysledekProcesu exitAndEnd(std::int32_t status = 0) {
        exit(status);
        return end();
    }

    using Signals = std::vector<ChildSignal>;

    ScriptedPrograms programs;
    ManualClock clock;
    ManualExecutor executor;
    ProcessRunner runner{programs, clock};
    std::vector<std::string> lines;
    std::optional<Result<VysledekProcesu>> result;
};

TEST_F(ProcessRunnerTest, DeliversALineAtItsLineBreakAndTheLastOneAtTheEnd) {
    begin();
    say("a\nb");
    EXPECT_EQ(lines, std::vector<std::string>{"a"});
    exit();
    EXPECT_EQ(lines.size(), 1U);
    auto whole = end();
    EXPECT_EQ(lines, (std::vector<std::string>{"a", "b"}));
    EXPECT_EQ(whole.vystup, "a\nb");
}

TEST_F(ProcessRunnerTest, JoinsALineThatCameInManyChunks) {
    begin();
    for (const char* chunk : {"o", "n", "e\ntw", "o\n\nth", "ree\n"}) say(chunk);
    exitAndEnd();
    EXPECT_EQ(lines, (std::vector<std::string>{"one", "two", "three"}));
}

TEST_F(ProcessRunnerTest, ABlankLineStaysInTheResultOnly) {
    begin();
    say("\n   \n\t \n  x \n\n");
    EXPECT_EQ(exitAndEnd().vystup, "\n   \n\t \n  x \n\n");
    EXPECT_EQ(lines, std::vector<std::string>{"  x "});
}

TEST_F(ProcessRunnerTest, ABlankLastLineIsNotDelivered) {
    begin();
    say("x\n  ");
    exitAndEnd();
    EXPECT_EQ(lines, std::vector<std::string>{"x"});
}

TEST_F(ProcessRunnerTest, TheCarriageReturnStaysAndEndsNoLine) {
    begin();
    say("a\r\nb\rc\n\r\n");
    exitAndEnd();
    EXPECT_EQ(lines, (std::vector<std::string>{"a\r", "b\rc", "\r"}));
}

TEST_F(ProcessRunnerTest, StandardErrorNeverReachesTheLineCallback) {
    begin();
    child().listener->errors("warning\n");
    auto whole = exitAndEnd();
    EXPECT_TRUE(lines.empty());
    EXPECT_EQ(whole.chyby, "warning\n");
    EXPECT_EQ(whole.vystup, "");
}

TEST_F(ProcessRunnerTest, ACharacterCutByAChunkIsReplacedInTheLineAndWholeInTheResult) {
    begin();
    say("k\xc5");
    say("\xaf\xc5\x88\n");
    auto whole = exitAndEnd();
    EXPECT_EQ(lines, std::vector<std::string>{"k\ufffd\ufffdň"});
    EXPECT_EQ(whole.vystup, "kůň\n");
}

TEST_F(ProcessRunnerTest, InvalidBytesAreReplacedInBothStreams) {
    begin();
    say("x\xff\n");
    child().listener->errors("\xc3");
    auto whole = exitAndEnd();
    EXPECT_EQ(whole.vystup, "x\ufffd\n");
    EXPECT_EQ(whole.chyby, "\ufffd");
}

TEST_F(ProcessRunnerTest, KeepsNoMoreThanTheCallerWantsAndDeliversAllLines) {
    begin({.vystup = 4, .chyby = 2});
    say("abc\n");
    say("def\n");
    child().listener->errors("x");
    child().listener->errors("yz");
    auto whole = exitAndEnd();
    EXPECT_EQ(whole.vystup, "abc\n");
    EXPECT_EQ(whole.chyby, "xy");
    EXPECT_EQ(lines, (std::vector<std::string>{"abc", "def"}));
}

TEST_F(ProcessRunnerTest, KeepsTheEndOfTheErrorsWhenTheCallerWantsThat) {
    const std::vector<std::pair<std::vector<std::string>, std::string>> cases = {
        {{}, ""},
        {{"ab"}, "ab"},
        {{"abcd"}, "abcd"},
        {{"abcde"}, "bcde"},
        {{"abcd", "e", "f"}, "cdef"},
        {{"a", "b", "c", "d", "e", "f", "g", "h", "i", "j", "k"}, "hijk"},
        {{"0123456789", "xyz"}, "9xyz"},
        {{"aaň", "bc"}, "ňbc"},
        {{"aaň", "bcd"}, "\ufffdbcd"},
    };
    for (const auto& [chunks, kept] : cases) {
        begin({.chyby = 4, .errorsPart = Capture::Part::ending});
        for (const auto& chunk : chunks) child().listener->errors(chunk);
        EXPECT_EQ(exitAndEnd().chyby, kept);
    }
}

TEST_F(ProcessRunnerTest, KeepsTheEndOfTheOutputWhenTheCallerWantsThatAndSaysWhetherItWasCut) {
    struct Case {
        std::vector<std::string> chunks;
        std::string end;
        std::string beginning;
        bool isCut;
    };

    const std::vector<Case> cases = {
        {{}, "", "", false},
        {{"ab", "cd"}, "abcd", "abcd", false},
        {{"abcde"}, "bcde", "abcd", true},
        {{"abcd", "e", "f"}, "cdef", "abcd", true},
        {{"0123456789", "xyz"}, "9xyz", "0123", true},
        {{"\xff\xff\xff\xff"}, "\ufffd\ufffd\ufffd\ufffd", "\ufffd\ufffd\ufffd\ufffd", false},
    };
    for (const auto& [chunks, wantedEnd, beginning, isCut] : cases)
        for (auto part : {Capture::Part::ending, Capture::Part::beginning}) {
            begin({.vystup = 4, .outputPart = part});
            for (const auto& chunk : chunks) say(chunk);
            const auto whole = exitAndEnd();
            EXPECT_EQ(whole.vystup, part == Capture::Part::ending ? wantedEnd : beginning);
            EXPECT_EQ(whole.isOutputCut, isCut) << wantedEnd;
        }
}

TEST_F(ProcessRunnerTest, ALineThatIsTooLongIsPassedOverAsAWhole) {
    const std::vector<std::vector<std::string>> cases = {
        {"a\n12345\n1234\n"},                        // whole in one chunk
        {"a\n123", "45", "67\n12", "34\n"},          // found out within a chunk
        {"a\n1234", "5", "\n1234\n"},                // longer by one
        {"a\n", "123456", "  ", "  \n", "1234", ""}, // blank at its end; the last line has no line break
    };
    for (const auto& chunks : cases) {
        lines.clear();
        begin({.line = 4});
        for (const auto& chunk : chunks)
            if (!chunk.empty()) say(chunk);
        exitAndEnd();
        EXPECT_EQ(lines, (std::vector<std::string>{"a", "1234"}));
    }
}

TEST_F(ProcessRunnerTest, ALastLineThatIsTooLongIsPassedOver) {
    begin({.line = 4});
    for (const char* chunk : {"a\n", "123", "456"}) say(chunk);
    EXPECT_EQ(exitAndEnd().vystup, "a\n123456");
    EXPECT_EQ(lines, std::vector<std::string>{"a"});
}

TEST_F(ProcessRunnerTest, WithoutACallbackTheOutputIsKept) {
    begin({}, false);
    say("a\nb");
    EXPECT_EQ(exitAndEnd(3).vystup, "a\nb");
    EXPECT_EQ(result->value().navratovyKod, 3);
}

TEST_F(ProcessRunnerTest, PassesTheProgramOnAsItIs) {
    begin();
    ASSERT_EQ(programs.programs.size(), 1U);
    EXPECT_EQ(programs.programs[0].binary, "/bin/tool");
    EXPECT_EQ(programs.programs[0].args, std::vector<std::string>{"a"});
    EXPECT_EQ(programs.programs[0].cwd, std::nullopt);
    EXPECT_TRUE(programs.programs[0].env.empty());
    exitAndEnd();
}

TEST_F(ProcessRunnerTest, OutputThatComesAfterTheExitCounts) {
    begin();
    exit();
    say("late");
    EXPECT_EQ(end().vystup, "late");
}

TEST_F(ProcessRunnerTest, ANaturalEndLeavesNoTimer) {
    begin();
    EXPECT_EQ(clock.untilNext(), 30s);
    auto whole = exitAndEnd();
    EXPECT_EQ(clock.waiting(), 0U);
    EXPECT_TRUE(child().signals.empty());
    EXPECT_FALSE(whole.vyprselCas);
    EXPECT_FALSE(whole.zruseno);
}

TEST_F(ProcessRunnerTest, TheLimitStopsInTwoStagesFourSecondsApart) {
    begin();
    clock.advance(30s - 1ns);
    EXPECT_TRUE(child().signals.empty());
    clock.advance(1ns);
    EXPECT_EQ(child().signals, Signals{ChildSignal::terminate});
    clock.advance(4s - 1ns);
    EXPECT_EQ(child().signals.size(), 1U);
    clock.advance(1ns);
    EXPECT_EQ(child().signals, (Signals{ChildSignal::terminate, ChildSignal::kill}));
    auto whole = exitAndEnd(9);
    EXPECT_TRUE(whole.vyprselCas);
    EXPECT_FALSE(whole.zruseno);
    EXPECT_EQ(whole.navratovyKod, 9);
}

TEST_F(ProcessRunnerTest, ACancelStopsInTheSameStages) {
    begin();
    EXPECT_TRUE(runner.zrusit());
    EXPECT_EQ(child().signals, Signals{ChildSignal::terminate});
    EXPECT_EQ(clock.untilNext(), 4s);
    clock.advance(4s);
    EXPECT_EQ(child().signals, (Signals{ChildSignal::terminate, ChildSignal::kill}));
    auto whole = exitAndEnd(9);
    EXPECT_TRUE(whole.zruseno);
    EXPECT_FALSE(whole.vyprselCas);
}

TEST_F(ProcessRunnerTest, AnEndingIsAskedForOnceAndLeavesNoMark) {
    begin();
    EXPECT_TRUE(runner.askToEnd());
    clock.advance(5s);
    EXPECT_EQ(child().signals, Signals{ChildSignal::terminate});
    exit(15);
    EXPECT_FALSE(runner.askToEnd());
    auto whole = end();
    EXPECT_FALSE(runner.askToEnd());
    EXPECT_FALSE(whole.zruseno);
    EXPECT_FALSE(whole.vyprselCas);
    EXPECT_EQ(whole.navratovyKod, 15);
}

TEST_F(ProcessRunnerTest, EachFlagIsSetByItsOwnTrigger) {
    begin();
    clock.advance(28s);
    EXPECT_TRUE(runner.zrusit());
    clock.advance(2s);
    clock.advance(2s);
    EXPECT_EQ(child().signals, (Signals{ChildSignal::terminate, ChildSignal::terminate, ChildSignal::kill}));
    auto whole = exitAndEnd(9);
    EXPECT_TRUE(whole.zruseno);
    EXPECT_TRUE(whole.vyprselCas);
}

TEST_F(ProcessRunnerTest, TheSecondStageReachesTheGroupOfAProgramThatHasEnded) {
    begin();
    runner.zrusit();
    auto played = programs.children.back();
    exitAndEnd(15);
    EXPECT_NE(played->listener, nullptr) << "reaped before the second stage";
    clock.advance(4s);
    EXPECT_EQ(played->signals, (Signals{ChildSignal::terminate, ChildSignal::kill}));
    EXPECT_EQ(played->listener, nullptr);
    EXPECT_EQ(clock.waiting(), 0U);
}

TEST_F(ProcessRunnerTest, ACancelBeforeTheLaunchOrAfterTheEndFindsNothing) {
    EXPECT_FALSE(runner.zrusit());
    begin();
    exit();
    EXPECT_FALSE(runner.zrusit()) << "the program has ended, its output has not";
    auto whole = end();
    EXPECT_FALSE(runner.zrusit());
    EXPECT_FALSE(whole.zruseno);
    EXPECT_TRUE(child().signals.empty());
}

TEST_F(ProcessRunnerTest, TheLimitDoesNotStrikeAProgramThatHasEnded) {
    begin();
    clock.advance(29s);
    exit();
    clock.advance(1s);
    EXPECT_TRUE(child().signals.empty());
    EXPECT_FALSE(end().vyprselCas);
}

TEST_F(ProcessRunnerTest, OutputThatDoesNotEndIsAwaitedTwoSecondsAfterTheExit) {
    begin();
    say("kept");
    exit();
    clock.advance(2s - 1ns);
    EXPECT_FALSE(child().isAbandoned);
    clock.advance(1ns);
    EXPECT_TRUE(child().isAbandoned);
    executor.runUntilIdle();
    EXPECT_EQ(result.value().value().vystup, "kept");
    EXPECT_EQ(lines, std::vector<std::string>{"kept"});
}

TEST_F(ProcessRunnerTest, TheSystemsOwnWordsOfAFailedLaunchGoToTheLog) {
    HeardLog log;
    programs.problems.emplace("/bin/tool", SystemError{EACCES});
    begin();
    EXPECT_EQ(log.lines(), std::vector<std::string>{"starting a program: Permission denied"});
}

TEST_F(ProcessRunnerTest, AFailedLaunchIsToldInWords) {
    programs.problems.emplace("/bin/tool", SystemError{ENOENT});
    begin();
    ASSERT_TRUE(result && !*result);
    const auto* error = result->error().as<TalkSpanError>();
    ASSERT_NE(error, nullptr);
    EXPECT_EQ(*error,
              (TalkSpanError{TalkSpanError::ToolFailed{
                  "tool", Sentence("Nepodařilo se spustit: " + SystemError{ENOENT}.popis().czech())}}));
    EXPECT_EQ(clock.waiting(), 0U);
    EXPECT_FALSE(runner.zrusit());
}

} // namespace
} // namespace morvex
