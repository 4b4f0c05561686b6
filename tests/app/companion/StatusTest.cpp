#include "app/companion/StatusReport.h"
#include "shared/wire/Json.h"
#include "shared/wire/ToolCatalogue.h"
#include "tests/support/CompanionHarness.h"

#include <gmock/gmock.h>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using StatusTest = CompanionHarness;

TEST_F(StatusTest, TellsWhatThisComputerCanDo) {
    startSecured();
    allowFolder("Projekty");
    companion->obnovit();
    auto statuses = takeStatuses();
    ASSERT_FALSE(statuses.empty());
    const auto& status = statuses.back();
    EXPECT_EQ(status.protocolVersion, ProtocolVersion::current);
    EXPECT_EQ(status.appVersion, "1.2.3 (4)");
    EXPECT_EQ(status.deviceName, "Počítač");
    EXPECT_EQ(status.allowedFolders, std::vector<std::string>{"Projekty"});
    std::vector<std::string> listed;
    for (const auto& tool : status.tools) listed.push_back(tool.name);
    EXPECT_EQ(listed, (std::vector<std::string>{"mac.status", "mac.agent.rename", "mac.files.search",
                                                "mac.files.read", "mac.files.write", "mac.terminal.run"}));
    EXPECT_FALSE(status.runningTask);
    EXPECT_TRUE(status.onPower);
    EXPECT_FALSE(status.mailAvailable);
    EXPECT_EQ(wholeSeconds(status.sentAt), wholeSeconds(clock.now()));
    EXPECT_FALSE(status.claude.installed);
    EXPECT_THAT(
        status.claude.problem.value().czech(),
        testing::MatchesRegex(
            R"(Binárku „claude“ jsem nenašel \(prohledáno [0-9]+ adresářů\)\. Nainstaluj: npm i -g @anthropic-ai/claude-code)"));
    EXPECT_FALSE(status.codex.installed);
    EXPECT_THAT(
        status.codex.problem.value().czech(),
        testing::MatchesRegex(
            R"(Binárku „codex“ jsem nenašel \(prohledáno [0-9]+ adresářů\)\. Nainstaluj: npm i -g @openai/codex \(nebo brew install codex\)\. Codex ve webovém ChatGPT ani rozšíření do editoru žádné CLI neinstalují\.)"));
}

TEST_F(StatusTest, AnAgentThatIsSwitchedOffSaysSoWhateverWasDetected) {
    startSecured();
    features->agents.stav().claude = AgentStatus{true, "1.0", "/usr/bin", {}};
    companion->integrations().turnOff(Integration::claude);
    auto status = takeStatuses().back();
    EXPECT_EQ(status.claude, (AgentStatus{false, {}, {}, Sentence("Vypnuto")}));
    EXPECT_NE(status.codex.problem, "Vypnuto");
}

TEST_F(StatusTest, IsSentOnEveryChangeOfFoldersAndSwitches) {
    startSecured();
    allowFolder("Projekty");
    EXPECT_FALSE(takeStatuses().empty());
    companion->integrations().turnOff(Integration::terminal);
    EXPECT_EQ(takeStatuses().size(), 1U);
    companion->integrations().turnOff(Integration::terminal);
    EXPECT_TRUE(takeStatuses().empty());
}

TEST_F(StatusTest, AChangeOfThePowerAloneSendsNothing) {
    startSecured();
    power.mains = false;
    clock.advance(60s);
    EXPECT_TRUE(takeStatuses().empty());
    companion->obnovit();
    EXPECT_FALSE(takeStatuses().back().onPower);
}

TEST_F(StatusTest, WithoutALinkNothingIsSentAndNoTroubleIsTold) {
    start();
    companion->obnovit();
    executor.runUntilIdle();
    EXPECT_EQ(trouble(), "none");
}

TEST_F(StatusTest, AFailedStatusIsTheOneSendThatIsTold) {
    startPaired();
    phone.logIn(false);
    executor.runUntilIdle();
    EXPECT_EQ(trouble(), "Stav se nepodařilo odeslat: Mac není dostupný.");
}

TEST_F(StatusTest, AReportTooLongForTheWayIsToldAndGoesShortened) {
    startSecured();
    allowFolder("Projekty");
    (void)takeStatuses();
    features->agents.stav().claude = AgentStatus{true, "1.0", std::string(4'000'000, 'x'), {}};
    (void)connectAgain();
    auto statuses = takeStatuses();
    ASSERT_EQ(statuses.size(), 1U);
    EXPECT_EQ(statuses[0].claude.source, std::string(1000, 'x') + "…");
    EXPECT_EQ(statuses[0].allowedFolders, std::vector<std::string>{"Projekty"});
    EXPECT_FALSE(statuses[0].tools.empty());
    EXPECT_EQ(trouble(), "Stav se nepodařilo odeslat: Zpráva je na přenos příliš dlouhá.");
    EXPECT_TRUE(call("mac.status", "{}").ok);
}

TEST(StatusReport, AShortenedOneFitsWhateverItHolds) {
    const std::string endless(10'000'000, '\x01');
    MacStatus status;
    status.appVersion = endless;
    status.deviceName = endless;
    for (int i = 0; i < 3; ++i)
        status.tools.push_back({"mac.custom." + std::to_string(i), "short", {}, "{}"});
    status.tools[1].parametersJSON = endless;
    status.claude = {true, endless, endless, Sentence(endless)};
    status.codex = status.claude;
    status.allowedFolders.assign(100'000, std::string(255, '"'));
    status.runningTask = RunningTask{endless, {}, endless, {}, endless};
    const auto less = shortened(status);
    EXPECT_LT(encode(MacPayload{MacPayload::Status{less}}).size(), frameLimit / 4 * 3);
    ASSERT_EQ(less.tools.size(), 2U) << "the long one is left out";
    EXPECT_EQ(less.tools[1].name, "mac.custom.2");
    EXPECT_GT(less.allowedFolders.size(), 1000U);
    const auto again = shortened(less);
    EXPECT_EQ(again.allowedFolders, less.allowedFolders);
}

} // namespace
} // namespace morvex
