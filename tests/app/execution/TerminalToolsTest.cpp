#include "app/execution/TerminalTools.h"

#include "platform/memory/FakeFolderPicker.h"
#include "platform/memory/MemoryBookmarks.h"
#include "platform/memory/MemoryDefaults.h"
#include "shared/wire/MacToolName.h"
#include "tests/app/execution/TerminalFixture.h"

namespace morvex {
namespace {

class TerminalToolsTest : public TerminalFixture {
  protected:
    TerminalToolsTest() {
        defaults.set("slozky.povolene", std::vector<DefaultsItem>{tree.path("home/Projects")});
        slozky = Slozky::create(defaults, bookmarks, picker, tree.standard);
        tools.emplace(*slozky, TerminalBridge::Services{programs, clock, discovery, executor},
                      stop.get_token());
        tools->addTo(table, [this] { return isOn; });
    }

    ToolOutcome call(boost::json::object arguments) {
        const auto tool = table.find(MacToolName::terminalRun);
        return executor.run(tool->run({"mac.terminal.run", std::move(arguments), "r"})).value();
    }

    MemoryDefaults defaults;
    MemoryBookmarks bookmarks;
    FakeFolderPicker picker;
    std::unique_ptr<Slozky> slozky;
    std::optional<TerminalTools> tools;
    ToolTable table;
    bool isOn = true;
};

TEST_F(TerminalToolsTest, IsOfferedWhileItIsOnAndAFolderIsAllowed) {
    EXPECT_EQ(table.offered().size(), 1U);
    isOn = false;
    EXPECT_TRUE(table.offered().empty());
    isOn = true;
    slozky->odebrat(tree.path("home/Projects"));
    EXPECT_TRUE(table.offered().empty());
}

TEST_F(TerminalToolsTest, AnswersStatusOutputAndErrors) {
    answer = {.output = "out", .errors = "err"};
    auto outcome = call({{"program", "git"}, {"args", {"status"}}, {"folder", "projects"}});
    EXPECT_TRUE(outcome.ok);
    EXPECT_EQ(outcome.result, (boost::json::object{{"exit_code", 0}, {"output", "out"}, {"stderr", "err"}}));
    EXPECT_EQ(commands().back().args, std::vector<std::string>{"status"});
}

TEST_F(TerminalToolsTest, ACommandRunsInTheFolderThatIsNamed) {
    picker.answers.push_back({tree.path("outside")});
    ASSERT_TRUE(executor.run(slozky->pridat()));
    ASSERT_TRUE(call({{"program", "ls"}, {"folder", "outside"}}).ok);
    EXPECT_EQ(commands().back().cwd, tree.path("outside"));
    ASSERT_TRUE(call({{"program", "ls"}, {"folder", "PROJECTS"}}).ok);
    EXPECT_EQ(commands().back().cwd, tree.path("home/Projects"));
}

TEST_F(TerminalToolsTest, AStatusThatIsNotZeroIsNotOkAndHasNoError) {
    answer = {.status = 3};
    auto outcome = call({{"program", "ls"}});
    EXPECT_FALSE(outcome.ok);
    EXPECT_EQ(outcome.result, (boost::json::object{{"exit_code", 3}, {"output", ""}, {"stderr", ""}}));
}

TEST_F(TerminalToolsTest, AFolderThatTheUserRemovesBeforeTheStartIsNotWorkedIn) {
    whileLookingForPrograms = [this] { slozky->odebrat(tree.path("home/Projects")); };
    auto outcome = call({{"program", "ls"}});
    EXPECT_FALSE(outcome.ok);
    EXPECT_EQ(outcome.result,
              (boost::json::object{{"error", "Pracovní složka (neurčena) není mezi povolenými."}}));
    EXPECT_TRUE(commands().empty());
}

TEST_F(TerminalToolsTest, WithoutAProgramNothingRuns) {
    for (const auto& arguments :
         {boost::json::object{}, {{"program", ""}}, {{"program", 1}}, {{"program", nullptr}}}) {
        auto outcome = call(arguments);
        EXPECT_FALSE(outcome.ok);
        EXPECT_EQ(outcome.result, (boost::json::object{{"error", "Chybí program."}}));
    }
    EXPECT_TRUE(commands().empty());
}

TEST_F(TerminalToolsTest, ABlankIsTheNameOfAProgramThatIsNotAllowed) {
    EXPECT_EQ(call({{"program", " "}}).result,
              (boost::json::object{
                  {"error", "Program   spustit neumím. Povolené jsou jen ty, které nic nemění."}}));
}

TEST_F(TerminalToolsTest, ArgumentsOfAnotherTypeCountAsNone) {
    for (const boost::json::value& args :
         std::vector<boost::json::value>{"-la", {"-la", 1}, {{"a", "b"}}, nullptr}) {
        EXPECT_TRUE(call({{"program", "ls"}, {"args", args}, {"folder", 7}}).ok);
        EXPECT_TRUE(commands().back().args.empty());
    }
}

TEST_F(TerminalToolsTest, ARefusalIsItsSentence) {
    auto outcome = call({{"program", "npm"}, {"args", {"install"}}});
    EXPECT_FALSE(outcome.ok);
    EXPECT_EQ(
        outcome.result,
        (boost::json::object{{"error", "npm install vyžaduje tvoje potvrzení. Schvalování zatím neumím — "
                                       "udělej to na Macu sám."}}));
}

} // namespace
} // namespace morvex
