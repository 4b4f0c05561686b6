#include "app/customapps/SeenTools.h"

#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <fstream>
#include <functional>
#include <memory>
#include <ranges>
#include <sys/stat.h>

namespace morvex {
namespace {

using Offered = std::vector<bool>;

class SeenToolsTest : public testing::Test {
  protected:
    ~SeenToolsTest() override { executor.run(seen->saved()); }

    void reload() {
        executor.run(seen->saved());
        seen = make();
    }

    std::unique_ptr<SeenTools> make() {
        return std::make_unique<SeenTools>(folder.path(), Saving{executor, executor, clock});
    }

    std::vector<std::string> newsOf(const std::string& app) {
        std::vector<std::string> names;
        for (const auto& tool : seen->news(app)) names.push_back(tool.name);
        return names;
    }

    using Names = std::vector<std::string>;

    static NamedDescription tool(const std::string& name, const std::string& description = "reads",
                                 const std::string& schema = "{}") {
        return {name, SeenDescription::of({name, description, schema})};
    }

    TemporaryFolder folder;
    ManualExecutor executor;
    ManualClock clock;
    std::unique_ptr<SeenTools> seen = make();
};

TEST_F(SeenToolsTest, TheFirstListOfAnAppIsTakenAsItIs) {
    seen->setHoldsChanges("app", true);
    EXPECT_EQ(seen->compare("app", {tool("a"), tool("b")}), Offered({true, true}));
    EXPECT_EQ(newsOf("app"), Names());
}

TEST_F(SeenToolsTest, AChangeOfDescriptionOrSchemaIsNewsWithWhatItWasAndIs) {
    seen->compare("app", {tool("a"), tool("b", "reads", R"({"x":1,"y":2})"), tool("c")});
    EXPECT_EQ(seen->compare("app", {tool("a", "sends"), tool("b", "reads", R"({"x":1})"), tool("c")}),
              Offered({true, true, true}));
    const auto news = seen->news("app");
    ASSERT_EQ(newsOf("app"), Names({"a", "b"}));
    EXPECT_EQ(news[0].known->description, "reads");
    EXPECT_EQ(news[0].news->description, "sends");
    EXPECT_EQ(news[1].known->schema, R"({"x":1,"y":2})");
    EXPECT_EQ(news[1].news->schema, R"({"x":1})");
}

TEST_F(SeenToolsTest, AnotherOrderOfMembersIsNoChange) {
    seen->compare("app", {tool("a", "reads", R"({"x":1,"y":{"p":1,"q":2}})")});
    seen->compare("app", {tool("a", "reads", R"({ "y":{"q":2,"p":1}, "x":1 })")});
    EXPECT_EQ(newsOf("app"), Names());
}

TEST_F(SeenToolsTest, AToolThatCameLaterIsNewsWithoutAnEarlierDescription) {
    seen->compare("app", {tool("a")});
    seen->compare("app", {tool("a"), tool("b")});
    ASSERT_EQ(newsOf("app"), Names({"b"}));
    EXPECT_FALSE(seen->news("app")[0].known);
}

TEST_F(SeenToolsTest, AChangeThatIsTakenBackStaysNewsUntilAPersonHasLooked) {
    seen->compare("app", {tool("a")});
    seen->setHoldsChanges("app", true);
    EXPECT_EQ(seen->compare("app", {tool("a", "sends")}), Offered{false});
    EXPECT_FALSE(seen->news("app")[0].isPast);
    EXPECT_EQ(seen->compare("app", {tool("a")}), Offered{true}) << "it is as it was";
    ASSERT_EQ(newsOf("app"), Names({"a"}));
    EXPECT_TRUE(seen->news("app")[0].isPast);
    EXPECT_EQ(seen->news("app")[0].news->description, "sends");
    seen->looked("app", seen->news("app"));
    EXPECT_EQ(newsOf("app"), Names());
    EXPECT_EQ(seen->compare("app", {tool("a", "sends")}), Offered{false})
        << "to have seen what is past is no approval";
}

TEST_F(SeenToolsTest, AToolThatGoesAndReturnsChangedIsNews) {
    seen->compare("app", {tool("a"), tool("b")});
    seen->compare("app", {tool("a")});
    EXPECT_EQ(newsOf("app"), Names());
    seen->compare("app", {tool("a"), tool("b", "sends")});
    ASSERT_EQ(newsOf("app"), Names({"b"}));
    EXPECT_EQ(seen->news("app")[0].known.value_or(SeenDescription{}).description, "reads");
}

TEST_F(SeenToolsTest, ANewToolThatGoesBeforeAnybodyLookedIsNewUntilThen) {
    seen->compare("app", {});
    seen->compare("app", {tool("a")});
    seen->compare("app", {});
    ASSERT_EQ(newsOf("app"), Names({"a"}));
    EXPECT_TRUE(seen->news("app")[0].isPast);
    seen->compare("app", {tool("a")});
    EXPECT_FALSE(seen->news("app")[0].isPast);
    seen->compare("app", {});
    seen->looked("app", seen->news("app"));
    EXPECT_EQ(newsOf("app"), Names());
    seen->compare("app", {tool("a")});
    EXPECT_EQ(newsOf("app"), Names({"a"})) << "nobody has seen it as it is offered";
}

TEST_F(SeenToolsTest, ToolsOfOneNameAreToldApartByTheirOrder) {
    seen->compare("app", {tool("a", "one"), tool("a", "two")});
    seen->compare("app", {tool("a", "one"), tool("a", "two")});
    EXPECT_EQ(newsOf("app"), Names());
    seen->compare("app", {tool("a", "one"), tool("a", "three")});
    EXPECT_EQ(newsOf("app").size(), 1U);
}

TEST_F(SeenToolsTest, ANameThatLooksLikeASecondOneIsAToolOfItsOwn) {
    seen->compare("app", {tool("a", "one"), tool("a\n2", "two"), tool("a", "three")});
    seen->setHoldsChanges("app", true);
    EXPECT_EQ(seen->compare("app", {tool("a", "one"), tool("a\n2", "evil"), tool("a", "three")}),
              Offered({true, false, true}));
}

TEST_F(SeenToolsTest, LookingEndsTheNewsThatWereShownAndNoOthers) {
    seen->compare("app", {tool("a"), tool("b")});
    seen->compare("app", {tool("a", "sends"), tool("b", "sends")});
    const auto shown = seen->news("app");
    seen->compare("app", {tool("a", "sends"), tool("b", "deletes")});
    seen->looked("app", shown);
    EXPECT_EQ(newsOf("app"), Names({"b"}));
    EXPECT_EQ(seen->news("app")[0].news->description, "deletes");
    seen->compare("app", {tool("a"), tool("b", "deletes")});
    EXPECT_EQ(newsOf("app"), Names({"a", "b"})) << "what was looked at is what is known now";
}

TEST_F(SeenToolsTest, ChangedAndNewToolsWaitWhereThePersonWantsIt) {
    seen->compare("app", {tool("a"), tool("b")});
    seen->setHoldsChanges("app", true);
    EXPECT_TRUE(seen->holdsChanges("app"));
    const std::vector changed{tool("a", "sends"), tool("b"), tool("c")};
    EXPECT_EQ(seen->compare("app", changed), Offered({false, true, false}));
    seen->looked("app", seen->news("app"));
    EXPECT_EQ(seen->compare("app", changed), Offered({true, true, true}));
}

TEST_F(SeenToolsTest, EachAppHasItsOwn) {
    seen->compare("one", {tool("a")});
    seen->compare("two", {tool("a", "sends")});
    EXPECT_EQ(newsOf("one"), Names());
    EXPECT_EQ(newsOf("two"), Names());
    seen->setHoldsChanges("one", true);
    EXPECT_FALSE(seen->holdsChanges("two"));
}

TEST_F(SeenToolsTest, EverythingIsReadAgainFromAPrivateFile) {
    seen->compare("app", {tool("a")});
    seen->compare("app", {tool("a", "sends")});
    seen->setHoldsChanges("app", true);
    const auto before = seen->news("app");
    reload();
    EXPECT_EQ(seen->news("app"), before);
    EXPECT_TRUE(seen->holdsChanges("app"));
    struct stat found{};
    ASSERT_EQ(::stat((folder.path() / "Morvex" / "custom-app-tools.json").c_str(), &found), 0);
    EXPECT_EQ(found.st_mode & 0777U, 0600U);
}

TEST_F(SeenToolsTest, AnAppIsForgottenWhenItDoesNotComeBack) {
    seen->compare("app", {tool("a")});
    seen->forget("app");
    seen->compare("app", {tool("a", "sends")});
    EXPECT_EQ(newsOf("app"), Names()) << "its list is a first one again";
}

TEST_F(SeenToolsTest, AnAppThatIsListedNoMoreIsForgottenOnceThereAreTooMany) {
    seen->setHoldsChanges("gone", true);
    for (std::size_t i = 1; i < SeenTools::mostApps; ++i) seen->setHoldsChanges(std::to_string(i), true);
    seen->prefer({"1"});
    EXPECT_TRUE(seen->holdsChanges("gone"));
    seen->setHoldsChanges("one more", true);
    seen->prefer({"1"});
    EXPECT_FALSE(seen->holdsChanges("gone"));
    EXPECT_TRUE(seen->holdsChanges("1"));
}

TEST_F(SeenToolsTest, OfAnAppThoseThatWereNamedLongestAgoAreForgottenFirst) {
    seen->compare("app", {tool("first"), tool("second")});
    for (int round = 0; round < 3; ++round) {
        std::vector<NamedDescription> tools{tool("second")};
        for (int i = 0; i < 255; ++i) tools.push_back(tool(std::to_string(round) + "-" + std::to_string(i)));
        seen->compare("app", tools);
        seen->looked("app", seen->news("app"));
    }
    seen->compare("app", {tool("first"), tool("second"), tool("2-0")});
    EXPECT_EQ(newsOf("app"), Names({"first"}));
}

TEST_F(SeenToolsTest, OfAllAppsThoseThatWereNamedLongestAgoAreForgottenFirst) {
    const int apps = static_cast<int>(SeenTools::roomInAll.tools / 256) + 1;
    std::vector<NamedDescription> tools;
    for (int i = 0; i < 256; ++i) tools.push_back(tool("t" + std::to_string(i)));
    for (int app = 0; app < apps; ++app) seen->compare("app" + std::to_string(app), tools);
    seen->compare("app1", tools);
    EXPECT_EQ(newsOf("app1"), Names()) << "still known";
    seen->compare("app0", {tool("t0")});
    EXPECT_EQ(newsOf("app0"), Names({"t0"})) << "forgotten, and new again";
}

TEST_F(SeenToolsTest, AChangeAtTheEndOfALongDescriptionIsKeptToBeShown) {
    const std::string text(4'000, 'x');
    seen->compare("app", {tool("a", text)});
    seen->compare("app", {tool("a", text + "y")});
    ASSERT_EQ(seen->countNews("app"), 1U);
    EXPECT_EQ(seen->news("app")[0].known->description, text);
    EXPECT_EQ(seen->news("app")[0].news->description, text + "y");
}

TEST_F(SeenToolsTest, TheBytesOfAnAppAreLimited) {
    const std::string text(32'000, 'x');
    const auto fitting = static_cast<int>(SeenTools::roomOfApp.bytes / (text.size() + 300));
    std::vector<NamedDescription> tools;
    for (int i = 0; i < fitting; ++i) tools.push_back(tool(std::to_string(i), text));
    seen->compare("app", tools);
    seen->compare("app", tools);
    EXPECT_EQ(newsOf("app"), Names()) << "all are known";
    for (int i = 0; i < 3; ++i) tools.push_back(tool("more" + std::to_string(i), text));
    seen->compare("other", tools);
    seen->setHoldsChanges("other", true);
    auto kept = seen->compare("other", tools);
    EXPECT_EQ(std::ranges::count(kept, false), 2);
    EXPECT_TRUE(std::ranges::all_of(kept | std::views::take(fitting + 1), std::identity()))
        << "of one list the first ones stay";
}

TEST_F(SeenToolsTest, WhatWasReadFromTheFileIsForgottenBeforeWhatIsNamedNow) {
    seen->compare("app", {tool("old")});
    seen->compare("other", {tool("a")});
    reload();
    std::vector<NamedDescription> tools;
    for (std::size_t i = 0; i < SeenTools::roomOfApp.tools; ++i) tools.push_back(tool(std::to_string(i)));
    seen->compare("app", tools);
    EXPECT_EQ(seen->countNews("app"), SeenTools::roomOfApp.tools);
    seen->looked("app", seen->news("app"));
    auto oneMore = tools;
    oneMore.back() = tool("old");
    seen->compare("app", oneMore);
    EXPECT_EQ(newsOf("app"), Names({"old"}));
}

TEST_F(SeenToolsTest, AFailedSaveIsToldAndTheNewsStay) {
    std::ofstream(folder.path() / "Morvex") << "in the way";
    int changes = 0;
    const auto connection = seen->onChange([&changes] { ++changes; });
    seen->compare("app", {tool("a")});
    seen->compare("app", {tool("a", "sends")});
    executor.run(seen->saved());
    EXPECT_TRUE(seen->problem());
    EXPECT_EQ(newsOf("app"), Names({"a"}));
    EXPECT_EQ(changes, 3) << "two lists and the problem";
}

} // namespace
} // namespace morvex
