#include "shared/base/SystemError.h"
#include "tests/app/agents/AgentFixture.h"

#include <algorithm>
#include <cerrno>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using testing::ElementsAre;

const Sentence loginProblem("Claude Code je nainstalovaný, ale přihlášení není platné nebo kontrola "
                            "neodpověděla. V Terminálu spusť `claude "
                            "auth login` a potom zde klikni na Zjistit znovu.");
const Sentence versionProblem("Binárka nalezena, ale `--version` neodpovědělo. Zkontroluj instalaci.");

/// Detection through the runner, as its callers see it.
class AgentDetectionTest : public AgentFixture {
  protected:
    AgentStatus detect(const std::string& tool) { return executor.run(runner.zjisti(tool)).value(); }

    /// Goes as far as the first program that the test has to play.
    void begin(const std::string& tool) {
        executor.start(store(runner.zjisti(tool)));
        executor.runUntilIdle();
    }

    Task<void> store(Task<AgentStatus> task) { status = co_await std::move(task); }

    static Task<void> run(Task<Result<AgentRunner::Vysledek>> task) { EXPECT_TRUE(co_await std::move(task)); }

    void finish(std::int32_t code) {
        auto& listener = *programs.children.back()->listener;
        listener.exited(code);
        listener.ended();
        executor.runUntilIdle();
    }

    [[nodiscard]] std::vector<std::vector<std::string>> asked() const {
        std::vector<std::vector<std::string>> all;
        for (const auto& program : programs.programs)
            if (program.binary.starts_with(path("bin"))) all.push_back(program.args);
        return all;
    }

    Adaptery adapters{{"rare", std::make_shared<RareAgent>()},
                      {"codex", knownAdapters().at("codex")},
                      {"claude-code", knownAdapters().at("claude-code")}};
    AgentRunner runner{{programs, clock, discovery, executor, executor}, stop.get_token(), adapters};
    std::optional<AgentStatus> status;
};

TEST_F(AgentDetectionTest, AnUnknownToolIsAProblem) {
    EXPECT_EQ(detect("vim"), (AgentStatus{false, {}, {}, Sentence("Neznámý nástroj.")}));
    EXPECT_TRUE(programs.programs.empty());
}

TEST_F(AgentDetectionTest, AVersionIsOneShortLineWithoutMarks) {
    version = Answer{.output = "\x1b[1m" + std::string(300, 'x') + "\n"};
    EXPECT_EQ(detect("codex").version, "\uFFFD[1m" + std::string(196, 'x'));
}

TEST_F(AgentDetectionTest, AMissingBinaryIsToldWithTheNumberOfFoldersAndTheHint) {
    auto path = executor.run(discovery.prihlasovaciPath()).value();
    auto folders = std::to_string(std::ranges::count(path, ':') + 1);
    EXPECT_EQ(detect("rare"), (AgentStatus{false,
                                           {},
                                           {},
                                           Sentence("Binárku „morvex-rare-agent“ jsem nenašel (prohledáno " +
                                                    folders + " adresářů). Nainstaluj ho.")}));
    EXPECT_TRUE(asked().empty());
}

TEST_F(AgentDetectionTest, TheSecondNameServesToo) {
    install("morvex-rare-cli");
    EXPECT_EQ(detect("rare"), (AgentStatus{true, "agent 1.0", path("bin"), {}}));
}

TEST_F(AgentDetectionTest, CodexIsAskedForItsVersionAlone) {
    EXPECT_EQ(detect("codex"), (AgentStatus{true, "agent 1.0", path("bin"), {}}));
    EXPECT_THAT(asked(), ElementsAre(ElementsAre("--version")));
    EXPECT_EQ(programs.programs.back().env.at("TERM"), "dumb");
    EXPECT_EQ(programs.programs.back().cwd, std::nullopt);
}

TEST_F(AgentDetectionTest, ClaudeCodeIsAskedForItsLoginToo) {
    EXPECT_EQ(detect("claude-code"), (AgentStatus{true, "agent 1.0", path("bin"), {}}));
    EXPECT_THAT(asked(), ElementsAre(ElementsAre("--version"), ElementsAre("auth", "status", "--json")));
    const auto& environment = programs.programs.back().env;
    EXPECT_EQ(environment.at("TERM"), "dumb") << "the login is asked for in the environment of a tool too";
    EXPECT_EQ(environment.at("LANG"), "C");
    EXPECT_TRUE(environment.at("PATH").starts_with(path("bin") + ":"));
}

TEST_F(AgentDetectionTest, TheVersionIsTheFirstLineThatSaysSomething) {
    struct Case {
        Answer answer;
        std::optional<std::string> expected;
    };

    const std::vector<Case> cases = {
        {{.output = "codex-cli 0.50.0\nmore\n"}, "codex-cli 0.50.0"},
        {{.output = "\n \n 2.0 (Claude Code)\r\nmore"}, "2.0 (Claude Code)"},
        {{.output = "1.0", .errors = "warning"}, "1.0"},
        {{.errors = "\n3.0\nmore"}, "3.0"},
        {{.output = " \n", .errors = "3.0"}, "3.0"},
        {{}, std::nullopt},
        {{.output = "1.0", .status = 1}, std::nullopt},
    };
    for (const auto& [answer, expected] : cases) {
        version = answer;
        EXPECT_EQ(detect("codex"), (AgentStatus{true, expected, path("bin"),
                                                expected ? std::nullopt : std::optional(versionProblem)}));
    }
}

TEST_F(AgentDetectionTest, AVersionThatDoesNotComeWithinFifteenSecondsIsNone) {
    version.reset();
    begin("codex");
    EXPECT_EQ(clock.untilNext(), 15s);
    programs.children.back()->listener->output("1.0\n");
    clock.advance(15s);
    finish(0);
    EXPECT_EQ(status, (AgentStatus{true, {}, path("bin"), versionProblem}));
}

TEST_F(AgentDetectionTest, ABinaryThatDoesNotStartHasNoVersion) {
    programs.problems.emplace(path("bin/codex"), SystemError{ENOEXEC});
    EXPECT_EQ(detect("codex"), (AgentStatus{true, {}, path("bin"), versionProblem}));
}

TEST_F(AgentDetectionTest, ALoginThatFailsIsTheProblemWhateverTheVersion) {
    login = Answer{.output = "{}", .status = 1};
    EXPECT_EQ(detect("claude-code"), (AgentStatus{true, "agent 1.0", path("bin"), loginProblem}));
    version = Answer{};
    EXPECT_EQ(detect("claude-code"), (AgentStatus{true, {}, path("bin"), loginProblem}));
}

TEST_F(AgentDetectionTest, ALoginThatDoesNotAnswerWithinEightSecondsIsAProblem) {
    login.reset();
    begin("claude-code");
    EXPECT_EQ(clock.untilNext(), 8s);
    clock.advance(8s);
    finish(0);
    EXPECT_EQ(status, (AgentStatus{true, "agent 1.0", path("bin"), loginProblem}));
}

TEST_F(AgentDetectionTest, ABinaryThatDoesNotStartHasNoLogin) {
    programs.problems.emplace(path("bin/claude"), SystemError{ENOEXEC});
    EXPECT_EQ(detect("claude-code"), (AgentStatus{true, {}, path("bin"), loginProblem}));
}

TEST_F(AgentDetectionTest, ACheckThatWasCancelledIsAProblem) {
    login.reset();
    begin("claude-code");
    stop.request_stop();
    EXPECT_THAT(programs.children.back()->signals, ElementsAre(ChildSignal::terminate));
    finish(0);
    EXPECT_EQ(status, (AgentStatus{true, "agent 1.0", path("bin"), loginProblem}));
}

TEST_F(AgentDetectionTest, AGoodLoginWithoutAVersionIsAProblemOfTheVersion) {
    version = Answer{};
    EXPECT_EQ(detect("claude-code"), (AgentStatus{true, {}, path("bin"), versionProblem}));
}

TEST_F(AgentDetectionTest, DetectionGoesOnWhileATaskRuns) {
    executor.start(run(runner.spust({"r1", {}, "codex", "x", path("work"), {}}, {})));
    executor.runUntilIdle();
    ASSERT_NE(runner.bezici(), nullptr);
    auto agent = programs.children.back();
    EXPECT_EQ(detect("claude-code").version, "agent 1.0");
    agent->listener->exited(0);
    agent->listener->ended();
    executor.runUntilIdle();
    EXPECT_EQ(runner.bezici(), nullptr);
}

} // namespace
} // namespace morvex
