#include "tests/app/programs/RealProgramsFixture.h"

#include <csignal>
#include <fcntl.h>
#include <fstream>
#include <future>

// What is left of a run: children of children, zombies, open files.

namespace morvex {
namespace {

using namespace std::chrono_literals;

TEST_F(RealProgramsTest, AGrandchildThatIgnoresSigtermOutlivesItsParentByTheStagesOnly) {
    auto path = fifo();
    FileDescriptor held(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    auto run = programs.begin("(trap '' TERM; exec 3>" + path + "; echo ready; exec sleep 1000) & wait");
    run.lines->waitFor("ready");
    EXPECT_TRUE(run.runner->zrusit());
    programs.waitForWait(2s);
    programs.clock.advance(2s);
    EXPECT_EQ(run.end().navratovyKod, SIGTERM);
    pollfd entry{held.get(), POLLIN, 0};
    EXPECT_EQ(::poll(&entry, 1, 0), 0) << "killed before the second stage";
    programs.clock.advance(2s);
    EXPECT_TRUE(isLetGo(held));
    EXPECT_FALSE(hasChildren());
}

TEST_F(RealProgramsTest, AGrandchildInASessionOfItsOwnCannotHangTheCaller) {
    auto path = fifo();
    FileDescriptor held(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    auto run = programs.begin("setsid sh -c 'exec 3>" + path +
                              "; echo $$; exec sleep 1000' & "
                              "read x <" +
                              path + ".go; echo parent");
    // The parent ends once its child lives in its own session.
    require(::mkfifo((path + ".go").c_str(), 0600) == 0 || errno == EEXIST, "no pipe");
    run.lines->waitForAny();
    std::ofstream(path + ".go") << "go\n";
    run.lines->waitFor("parent");
    programs.waitForWait(2s);
    programs.clock.advance(2s);
    auto result = run.end();
    EXPECT_EQ(result.navratovyKod, 0);
    EXPECT_TRUE(result.vystup.ends_with("\nparent\n"));
    pollfd entry{held.get(), POLLIN, 0};
    EXPECT_EQ(::poll(&entry, 1, 0), 0) << "a program's own session is its own affair";
    ::kill(std::stoi(result.vystup), SIGKILL);
    EXPECT_TRUE(isLetGo(held));
}

TEST_F(RealProgramsTest, ACancelEndsWhatLeftTheGroupInTheSameTwoStages) {
    auto path = fifo();
    FileDescriptor held(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    auto run = programs.begin("setsid sh -c \"trap 'echo asked' TERM; exec 3>" + path +
                              "; echo ready; while :; do sleep 0.1; done\" & wait");
    run.lines->waitFor("ready");
    EXPECT_TRUE(run.runner->zrusit());
    run.lines->waitFor("asked");
    programs.waitForWait(2s);
    programs.clock.advance(2s);
    EXPECT_TRUE(run.end().zruseno);
    pollfd entry{held.get(), POLLIN, 0};
    EXPECT_EQ(::poll(&entry, 1, 0), 0) << "killed before the second stage";
    programs.clock.advance(2s);
    EXPECT_TRUE(isLetGo(held));
}

TEST_F(RealProgramsTest, ACancelOvertakesAProgramThatStartsSessionsWithoutEnd) {
    auto path = fifo();
    FileDescriptor held(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    auto run = programs.begin(
        "exec 3>" + path +
        "; echo ready; for i in 1 2 3 4 5 6 7 8; do while :; do setsid sleep 1000 & done & done; wait");
    run.lines->waitFor("ready");
    EXPECT_TRUE(run.runner->zrusit());
    EXPECT_EQ(run.end().navratovyKod, SIGTERM);
    programs.clock.advance(4s);
    EXPECT_TRUE(isLetGo(held));
}

TEST_F(RealProgramsTest, ACancelEndsAGroupOfItsOwnWhoseParentHasEnded) {
    auto path = fifo();
    FileDescriptor held(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    auto run = programs.begin("exec bash -c 'set -m; (sh -c \"exec 3>" + path +
                              "; echo open; exec sleep 1000\" &); echo ended; exec sleep 1000'");
    run.lines->waitFor("open");
    run.lines->waitFor("ended");
    EXPECT_TRUE(run.runner->zrusit());
    run.end();
    EXPECT_TRUE(isLetGo(held));
}

TEST_F(RealProgramsTest, WhatWasWrittenBeforeNobodyWaitsAnyMoreIsReadByASlowReaderToo) {
    // A pipe each: one that is opened again may still have its last writer.
    const auto go = fifo();
    const auto again = go + ".again";
    const auto written = go + ".written";
    for (const auto& path : {again, written}) require(::mkfifo(path.c_str(), 0600) == 0, "no pipe");
    std::promise<void> late;
    std::promise<void> reads;
    const auto slowly = [&, mayRead = reads.get_future().share()](std::string_view line) {
        if (line != "late") return;
        late.set_value();
        mayRead.wait();
    };
    auto run = std::async(std::launch::async, [&] {
        return programs
            .run(RealPrograms::shell("(read x <" + go + "; echo late; read x <" + again +
                                     "; echo later; echo more >&2; echo >" + written +
                                     "; exec sleep 1000) & echo $!"),
                 slowly)
            .value();
    });
    programs.waitForWait(2s);
    std::ofstream(go) << "go\n";
    late.get_future().wait();
    std::ofstream(again) << "go\n";
    std::ifstream(written).get();
    programs.clock.advance(2s);
    reads.set_value();
    const auto result = run.get();
    EXPECT_TRUE(result.vystup.ends_with("\nlate\nlater\n")) << result.vystup;
    EXPECT_EQ(result.chyby, "more\n");
    ::kill(std::stoi(result.vystup), SIGKILL);
}

TEST_F(RealProgramsTest, TheSecondStageEndsAlsoWhatWasStartedBetweenTheStages) {
    auto path = fifo();
    FileDescriptor held(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    auto run = programs.begin("setsid sh -c \"trap 'setsid sh -c \\\"echo started; exec sleep 1000\\\" 3>" +
                              path + " &' TERM; echo ready; while :; do sleep 0.1; done\" & wait");
    run.lines->waitFor("ready");
    EXPECT_TRUE(run.runner->zrusit());
    run.lines->waitFor("started");
    programs.waitForWait(2s);
    programs.clock.advance(4s);
    run.end();
    EXPECT_TRUE(isLetGo(held));
}

TEST_F(RealProgramsTest, AProgramThatWasStoppedHearsThatItShallEnd) {
    auto run = programs.begin("echo ready; kill -STOP $$; sleep 1000");
    run.lines->waitFor("ready");
    EXPECT_TRUE(run.runner->zrusit());
    EXPECT_EQ(run.end().navratovyKod, SIGTERM);
}

TEST_F(RealProgramsTest, AProgramThatEndsOnItsOwnLeavesBehindWhatItStarted) {
    auto path = fifo();
    FileDescriptor held(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    // The shell opens the pipe, so that it is open before the program ends.
    auto result = shell("exec 3>" + path + "; sleep 1000 >/dev/null 2>&1 & echo $!");
    EXPECT_EQ(result.navratovyKod, 0);
    pollfd entry{held.get(), POLLIN, 0};
    EXPECT_EQ(::poll(&entry, 1, 0), 0);
    ::kill(std::stoi(result.vystup), SIGKILL);
    EXPECT_TRUE(isLetGo(held));
}

TEST_F(RealProgramsTest, NothingIsLeftOfManyRunsAtOnce) {
    shell("true");
    auto before = openDescriptors();
    const char* scripts[] = {"exit 0",   "kill -KILL $$",        "echo x; echo y >&2", "exec >&-; exit 3",
                             "seq 2000", "trap '' TERM; echo x", "(exit 1) & wait $!"};
    for (int round = 0; round < 10; ++round) {
        std::vector<std::unique_ptr<RealPrograms::Begun>> runs;
        for (const auto* script : scripts)
            runs.push_back(std::make_unique<RealPrograms::Begun>(programs, RealPrograms::shell(script)));
        runs.push_back(
            std::make_unique<RealPrograms::Begun>(programs, RealPrograms::shell("exec sleep 1000")));
        while (!runs.back()->runner->zrusit()) std::this_thread::yield();
        for (auto& run : runs) run->end();
        programs.clock.advance(4s);
    }
    EXPECT_EQ(openDescriptors(), before);
    EXPECT_FALSE(hasChildren());
    EXPECT_EQ(programs.clock.waiting(), 0U);
}

TEST_F(RealProgramsTest, AChildThatIsGivenUpIsKilledAndReaped) {
    struct Silent final : ChildListener {
        void output(std::string_view) override {}

        void errors(std::string_view) override {}

        void exited(std::int32_t) override {}

        void ended() override {}
    } listener;

    programs.launcher.launch(RealPrograms::shell("trap '' TERM; sleep 1000"), listener).value();
    EXPECT_FALSE(hasChildren());
}

TEST_F(RealProgramsTest, AStopWhoseSecondStageCannotComeAnyMoreKillsWhatIsLeftAtOnce) {
    auto path = fifo();
    FileDescriptor held(::open(path.c_str(), O_RDONLY | O_NONBLOCK | O_CLOEXEC));
    {
        RealPrograms ending;
        auto run = ending.begin("(trap '' TERM; exec 3>" + path + "; echo ready; exec sleep 1000) & wait");
        run.lines->waitFor("ready");
        EXPECT_TRUE(run.runner->zrusit());
        ending.waitForWait(2s);
        ending.clock.advance(2s);
        EXPECT_EQ(run.end().navratovyKod, SIGTERM);
        pollfd entry{held.get(), POLLIN, 0};
        EXPECT_EQ(::poll(&entry, 1, 0), 0);
    }
    EXPECT_TRUE(isLetGo(held)) << "it outlives the clock, as a program that quits leaves it";
    EXPECT_FALSE(hasChildren());
}

TEST_F(RealProgramsTest, ALaunchThatFailsLeavesNoDescriptor) {
    shell("true");
    auto before = openDescriptors();
    for (const char* binary : {"/nonexistent", "/", "/etc/passwd"})
        EXPECT_NE(launchProblem({.binary = binary}), "") << binary;
    EXPECT_EQ(openDescriptors(), before);
}

} // namespace
} // namespace morvex
