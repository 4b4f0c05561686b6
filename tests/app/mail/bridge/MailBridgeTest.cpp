#include "app/mail/bridge/MailBridge.h"

#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedPrograms.h"
#include "shared/wire/TalkSpanError.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <optional>
#include <utility>

namespace morvex {
namespace {

using namespace std::chrono_literals;

/// A bridge whose programs the test plays.
class MailBridgeTest : public testing::Test {
  protected:
    MailBridgeTest() { makeProgram(std::filesystem::perms::owner_all); }

    void makeProgram(std::filesystem::perms permissions) const {
        std::ofstream(osascript) << "";
        std::filesystem::permissions(osascript, permissions);
    }

    void begin(const std::string& script = "return 'a';") {
        executor.start(
            store(bridge.spustitSkript<std::string>(script, {}, MailBridge::timeLimit, stop.get_token())));
        executor.runUntilIdle();
    }

    Task<void> store(Task<Result<std::string>> task) { result = co_await std::move(task); }

    ScriptedPrograms::Child& child() { return *programs.children.back(); }

    /// Ends the program and gives the result, or the sentence of the failure.
    std::string end(std::int32_t status) {
        child().listener->exited(status);
        child().listener->ended();
        executor.runUntilIdle();
        return told();
    }

    [[nodiscard]] std::string told() const {
        const auto& ended = result.value();
        return ended ? *ended : ended.error().popis().czech();
    }

    TemporaryFolder folder;
    std::string osascript = folder.path() / "osascript";
    ManualExecutor executor;
    ManualClock clock;
    ScriptedPrograms programs;
    std::stop_source stop;
    MailBridge bridge{{.launcher = programs,
                       .clock = clock,
                       .workers = executor,
                       .environment = {{"A", "1"}, {"PATH", "/bin"}},
                       .osascript = osascript}};
    std::optional<Result<std::string>> result;
};

constexpr auto notUnderstood = "Mail vrátil něco, čemu nerozumím.";
constexpr auto onlyOnMac = "Apple Mail existuje jen v systému macOS.";

TEST_F(MailBridgeTest, RunsTheSystemsProgramForScripts) {
    EXPECT_EQ((MailBridge::Services{programs, clock, executor, {}}.osascript), "/usr/bin/osascript");
}

TEST_F(MailBridgeTest, StartsTheProgramWithTheScriptInTheOwnEnvironmentAndFolder) {
    begin("return 1;");
    ASSERT_EQ(programs.programs.size(), 1U);
    const auto& program = programs.programs.front();
    EXPECT_EQ(program.binary, osascript);
    EXPECT_EQ(program.args,
              (std::vector<std::string>{"-l", "JavaScript", "-e", scriptRun::program("return 1;", {})}));
    EXPECT_EQ(program.env, (Environment{{"A", "1"}, {"PATH", "/bin"}}));
    EXPECT_FALSE(program.cwd);
    child().listener->output("\n \"done\" \n");
    EXPECT_EQ(end(0), "done");
}

TEST_F(MailBridgeTest, WithoutTheProgramThereIsNoAttempt) {
    std::filesystem::remove(osascript);
    EXPECT_FALSE(bridge.isAvailable());
    begin();
    EXPECT_EQ(told(), onlyOnMac);
    std::filesystem::create_directory(osascript);
    begin();
    EXPECT_EQ(told(), onlyOnMac);
    std::filesystem::remove(osascript);
    EXPECT_TRUE(programs.programs.empty());
}

TEST_F(MailBridgeTest, AFileThatMayNotBeRunIsNoProgram) {
    makeProgram(std::filesystem::perms::owner_read);
    EXPECT_FALSE(bridge.isAvailable());
    makeProgram(std::filesystem::perms::owner_all);
    EXPECT_TRUE(bridge.isAvailable());
}

TEST_F(MailBridgeTest, EveryOperationNeedsTheProgram) {
    std::filesystem::remove(osascript);
    const auto sentence = [this](auto task) {
        auto failed = executor.run(std::move(task));
        return *failed ? "" : failed->error().popis().czech();
    };
    EXPECT_EQ(sentence(bridge.zpravy("", "", true, 10)), onlyOnMac);
    EXPECT_EQ(sentence(bridge.obsah("1", {})), onlyOnMac);
    EXPECT_EQ(sentence(bridge.odeslat("", "a@b.example", "", "")), onlyOnMac);
    EXPECT_EQ(sentence(bridge.koncept("", "a@b.example", "", "")), onlyOnMac);
    EXPECT_TRUE(programs.programs.empty());
}

TEST_F(MailBridgeTest, EveryOperationHas45Seconds) {
    const auto limit = [this](auto task) {
        executor.run(std::move(task));
        const auto until = clock.untilNext();
        child().listener->exited(0);
        child().listener->ended();
        executor.runUntilIdle();
        return until;
    };
    EXPECT_EQ(limit(bridge.zpravy("", "", true, 10)), 45s);
    EXPECT_EQ(limit(bridge.obsah("1", {})), 45s);
    EXPECT_EQ(limit(bridge.odeslat("", "a@b.example", "", "")), 45s);
    EXPECT_EQ(limit(bridge.koncept("", "a@b.example", "", "")), 45s);
}

TEST_F(MailBridgeTest, AMailThatDoesNotAnswerIsToldAsThatWhateverItWrote) {
    begin();
    child().listener->errors("execution error: x (-1743)\n");
    clock.advance(45s);
    EXPECT_EQ(child().signals, std::vector<ChildSignal>{ChildSignal::terminate});
    EXPECT_EQ(end(0), "Mail neodpověděl včas. Zkus menší počet zpráv.");
    EXPECT_EQ(programs.programs.size(), 1U);
}

TEST_F(MailBridgeTest, AFailureIsToldInTheWordsOfTheScriptAndNotTriedAgain) {
    begin();
    child().listener->output("\"a\"");
    child().listener->errors("execution error: Error: Účet neznám. (-2700)\n");
    EXPECT_EQ(end(1), "Error: Účet neznám.");
    EXPECT_EQ(programs.programs.size(), 1U);
}

TEST_F(MailBridgeTest, WarningsOfAProgramThatSucceededDoNotCount) {
    begin();
    child().listener->output("\"a\"");
    child().listener->errors("Error: a warning (-1743)\n");
    EXPECT_EQ(end(0), "a");
}

TEST_F(MailBridgeTest, AFailedLaunchIsPassedOn) {
    programs.problems.emplace(osascript, TextError("Something is missing."));
    begin();
    ASSERT_FALSE(result.value().has_value());
    EXPECT_TRUE(result->error().as<TalkSpanError>());
    EXPECT_TRUE(told().contains("Nepodařilo se spustit: Something is missing.")) << told();
}

TEST_F(MailBridgeTest, AStopBeforeTheLaunchStartsNothing) {
    stop.request_stop();
    begin();
    EXPECT_EQ(told(), TalkSpanError{TalkSpanError::Cancelled{}}.popis().czech());
    EXPECT_TRUE(programs.programs.empty());
}

TEST_F(MailBridgeTest, AStopEndsTheScriptWhichThenHasFailed) {
    begin();
    stop.request_stop();
    EXPECT_EQ(child().signals, std::vector<ChildSignal>{ChildSignal::terminate});
    child().listener->output("\"a\"");
    EXPECT_EQ(end(0), "Mail operaci odmítl.");
}

TEST_F(MailBridgeTest, OutputThatIsTooLongIsCutAndNotTrusted) {
    begin();
    child().listener->output("\"a\"" + std::string(scriptRun::longestOutput - 3, ' '));
    EXPECT_EQ(end(0), "a");
    begin();
    child().listener->output("\"a\"" + std::string(scriptRun::longestOutput - 2, ' '));
    EXPECT_EQ(end(0), notUnderstood);
}

TEST_F(MailBridgeTest, OfLongErrorsTheEndCounts) {
    begin();
    child().listener->errors("Error: -1743\n" + std::string(2 * scriptRun::longestErrors, 'x') +
                             "\nexecution error: Error: words (-2700)\n");
    EXPECT_EQ(end(1), "Error: words");
}

} // namespace
} // namespace morvex
