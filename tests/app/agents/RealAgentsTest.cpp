#include "app/agents/AgentRunner.h"
#include "foundation/ThreadExecutor.h"
#include "platform/memory/ManualClock.h"
#include "tests/app/programs/RealPrograms.h"
#include "tests/support/Await.h"
#include "tests/support/TemporaryFolder.h"

#include MORVEX_BASICS

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <future>

namespace morvex {
namespace {

using testing::Contains;
using testing::Each;
using testing::ElementsAre;
using testing::SizeIs;

/// The agents are small shell scripts; what they print is the event stream of Codex.
class RealAgentsTest : public testing::Test {
  protected:
    using Outcome = Result<AgentRunner::Vysledek>;

    /// One for all tests: the search path is found out once.
    struct Services {
        Services() { std::filesystem::create_directories(folder.path() / "work"); }

        TemporaryFolder folder;
        SystemLauncher launcher;
        ManualClock clock;
        ThreadExecutor main{"main"};
        ThreadExecutor workers{"workers"};
        ProgramDiscovery discovery{
            launcher, clock, workers, {{{"PATH", folder.path().string()}}, "/nonexistent"}};
    };

    static void SetUpTestSuite() { services = std::make_unique<Services>(); }

    static void TearDownTestSuite() { services.reset(); }

    /// Installs an agent that does this when it is run for a task.
    static void install(const std::string& script, const std::string& name = "codex") {
        auto file = services->folder.path() / name;
        std::ofstream(file) << "#!/bin/sh\n[ \"$1\" = --version ] && { echo agent 1.0; exit; }\n"
                               "[ \"$1\" = auth ] && exit\n"
                            << script;
        std::filesystem::permissions(file, std::filesystem::perms::owner_all);
    }

    static std::string workFolder() { return services->folder.path() / "work"; }

    Outcome run(const std::string& script, std::optional<std::string> session = {}) {
        install(script);
        return await(services->main, spust(std::move(session)));
    }

    Outcome runClaude(const std::string& script) {
        install(script, "claude");
        return await(services->main, spust({}, "claude-code"));
    }

    std::future<Outcome> begin(const std::string& script) {
        install(script);
        return std::async(std::launch::async, [this] { return await(services->main, spust({})); });
    }

    Task<Outcome> spust(std::optional<std::string> session, const std::string& tool = "codex") {
        return runner.spust({"r1", {}, tool, "Oprav to.", workFolder(), std::move(session)},
                            {onMain(progress), onMain(sessions)});
    }

    /// Both are heard on the main thread only.
    static std::function<void(std::string)> onMain(Lines& lines) {
        return [add = lines.callback()](const std::string& line) {
            EXPECT_TRUE(services->main.isCurrent());
            add(line);
        };
    }

    bool cancel() {
        return await(services->main, runOn(services->main, [this] { return runner.zrus(); }));
    }

    static inline std::unique_ptr<Services> services;
    Lines progress;
    Lines sessions;
    AgentRunner runner{
        {services->launcher, services->clock, services->discovery, services->main, services->workers}, {}};
};

TEST_F(RealAgentsTest, AGoodRunGivesItsTextItsSessionAndItsProgress) {
    auto outcome = run(R"sh(
echo '{"type":"thread.started","thread_id":"t1"}'
echo '{"type":"item.started","item":{"type":"command_execution","command":"make"}}'
echo '{"type":"turn.completed","text":"Hotovo."}'
)sh");
    EXPECT_EQ(outcome.value(), (AgentRunner::Vysledek{"Hotovo.", "t1"}));
    EXPECT_THAT(progress.all(), ElementsAre("Relace navázána.", "Spouštím: make"));
    EXPECT_THAT(sessions.all(), ElementsAre("t1"));
}

TEST_F(RealAgentsTest, ClaudeCodeIsUnderstoodAmongMalformedAndHugeLines) {
    auto outcome = runClaude(R"sh(
echo '{"type":"system","subtype":"init","session_id":"s1"}'
echo 'Logged in.'
echo '{"type":"error"'
echo '[{"type":"error"}]'
printf '{"type":"error","message":"'; head -c 50000000 /dev/zero | tr '\0' x; echo '"}'
echo '{"type":"assistant","session_id":"s1","message":{"content":[{"type":"text","text":"Dívám se."},{"type":"tool_use","name":"Read"}]}}'
printf '{"type":"result","session_id":"s1","result":"%s %s"}' "$1" "$(pwd)"
)sh");
    EXPECT_EQ(outcome.value(), (AgentRunner::Vysledek{"-p " + workFolder(), "s1"}));
    EXPECT_THAT(progress.all(), ElementsAre("Relace navázána.", "Používám nástroj Read."));
    EXPECT_THAT(sessions.all(), ElementsAre("s1"));
}

TEST_F(RealAgentsTest, AnErrorOfClaudeCodeIsToldInItsWords) {
    auto outcome = runClaude(R"sh(
echo '{"type":"result","is_error":true,"session_id":"s1","result":"Invalid API key"}'
exit 1
)sh");
    EXPECT_EQ(outcome.error().popis().czech(), "claude-code skončil chybou: Invalid API key");
}

TEST_F(RealAgentsTest, TheCauseAtTheEndOfNoisyErrorsIsTold) {
    auto outcome = run(R"sh(
head -c 1000000 /dev/zero | tr '\0' ' ' >&2
echo 'Nejde to.' >&2
exit 3
)sh");
    EXPECT_EQ(outcome.error().popis().czech(), "codex skončil chybou: Nejde to.");
}

TEST_F(RealAgentsTest, TheAgentGetsItsFolderItsArgumentsAndAnInputAtItsEnd) {
    auto outcome = run(R"sh(
cat
printf '{"type":"turn.completed","text":"%s %s %s %s"}' "$(pwd)" "$#" "$4" "$TERM"
)sh");
    EXPECT_EQ(outcome.value().text, workFolder() + " 8 " + workFolder() + " dumb");
}

TEST_F(RealAgentsTest, MalformedLinesAreSkipped) {
    auto outcome = run(R"sh(
echo 'Logged in.'
echo '{"type":"error"'
printf '{"type":"error",\000}\n'
echo '[{"type":"error"}]'
echo '{"type":"error","message":"\ud800"}'
i=0; while [ $i -lt 100 ]; do printf '{"msg":'; i=$((i+1)); done; echo
echo '{"type":"turn.completed","text":"Hotovo."}'
)sh");
    EXPECT_EQ(outcome.value().text, "Hotovo.");
}

TEST_F(RealAgentsTest, BytesThatAreNoTextAreReplaced) {
    auto outcome = run(R"sh(printf '{"type":"turn.completed","text":"a\377b"}')sh");
    EXPECT_EQ(outcome.value().text, "a\ufffdb");
}

TEST_F(RealAgentsTest, ALineOfFiftyMegabytesIsPassedOverAndTheRestIsRead) {
    auto outcome = run(R"sh(
printf '{"type":"error","message":"'; head -c 50000000 /dev/zero | tr '\0' x; echo '"}'
echo '{"type":"turn.completed","text":"Hotovo."}'
)sh");
    EXPECT_EQ(outcome.value().text, "Hotovo.");
}

TEST_F(RealAgentsTest, ALongLineWithinTheBoundIsRead) {
    auto outcome = run(R"sh(
printf '{"type":"turn.completed","text":"'; head -c 8000000 /dev/zero | tr '\0' x; echo '"}'
)sh");
    EXPECT_EQ(outcome.value().text, std::string(8'000'000, 'x'));
}

TEST_F(RealAgentsTest, InterleavedStreamsDoNotMix) {
    auto outcome = run(R"sh(
i=0
while [ $i -lt 500 ]; do
  printf '{"type":"item.started","item":{"type":"file_'
  echo '{"type":"error","message":"ne"}' >&2
  echo 'change"}}'
  i=$((i+1))
done
)sh");
    EXPECT_EQ(outcome.value().text, "Nástroj nevrátil žádný text.");
    EXPECT_THAT(progress.all(), SizeIs(500));
    EXPECT_THAT(progress.all(), Each(std::string("Upravuji soubory.")));
}

TEST_F(RealAgentsTest, EndlessEventsAreStoppedByACancel) {
    auto outcome = begin(R"sh(
echo '{"type":"thread.started"}'
exec yes '{"type":"item.started","item":{"type":"command_execution"}}'
)sh");
    progress.waitFor("Spouštím příkaz.");
    EXPECT_TRUE(cancel());
    EXPECT_EQ(outcome.get().error().popis().czech(), "Zrušeno.");
}

TEST_F(RealAgentsTest, AnEndlessLineIsStoppedByACancel) {
    auto outcome = begin(R"sh(
echo '{"type":"thread.started"}'
exec tr '\0' x </dev/zero
)sh");
    progress.waitFor("Relace navázána.");
    EXPECT_TRUE(cancel());
    EXPECT_EQ(outcome.get().error().popis().czech(), "Zrušeno.");
}

TEST_F(RealAgentsTest, AnErrorInTheMiddleEndsTheAgentBySigtermAlone) {
    auto outcome = run(R"sh(
trap 'echo "{\"type\":\"item.started\",\"item\":{\"type\":\"command_execution\",\"command\":\"uklid\"}}"; exit 0' TERM
echo '{"type":"error","message":"Došel kredit."}'
while :; do sleep 0.01; done
)sh");
    EXPECT_EQ(outcome.error().popis().czech(), "codex skončil chybou: Došel kredit.");
    EXPECT_THAT(progress.all(), Contains("Spouštím: uklid")) << "it had the time to clean up";
}

TEST_F(RealAgentsTest, AnAgentThatIgnoresTheSignalAfterItsErrorGoesOnToItsEnd) {
    auto outcome = run(R"sh(
trap '' TERM
echo '{"type":"error","message":"Došel kredit."}'
echo '{"type":"turn.completed","text":"Dokončeno."}'
echo '{"type":"item.started","item":{"type":"command_execution","command":"konec"}}'
)sh");
    EXPECT_EQ(outcome.error().popis().czech(), "codex skončil chybou: Došel kredit.");
    EXPECT_THAT(progress.all(), ElementsAre("Spouštím: konec"));
}

TEST_F(RealAgentsTest, ASessionThatIsGoneIsReplaced) {
    auto outcome = run(R"sh(
[ "$8" = resume ] && { echo 'Error: thread not found' >&2; exit 1; }
echo '{"type":"thread.started","thread_id":"t2"}'
echo '{"type":"turn.completed","text":"Hotovo."}'
)sh",
                       "t1");
    EXPECT_EQ(outcome.value(), (AgentRunner::Vysledek{"Hotovo.", "t2"}));
    EXPECT_THAT(progress.all(),
                ElementsAre("Předchozí relace už neexistuje, zakládám novou.", "Relace navázána."));
}

TEST_F(RealAgentsTest, TheStatusIsToldWithoutWordsOfItsOwn) {
    EXPECT_EQ(run("echo ' Nejde to. ' >&2; exit 3").error().popis().czech(),
              "codex skončil chybou: Nejde to.");
    EXPECT_EQ(run("exit 3").error().popis().czech(), "codex skončil chybou: Proces skončil s kódem 3.");
}

} // namespace
} // namespace morvex
