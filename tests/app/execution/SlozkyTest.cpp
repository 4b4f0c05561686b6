#include "platform/posix/InodeBookmarks.h"
#include "shared/base/SystemError.h"
#include "tests/app/execution/SlozkyFixture.h"
#include "tests/support/PlainUser.h"
#include "tests/support/SlowDefaults.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cerrno>

namespace morvex {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr auto bookmarksKey = "slozky.bezpecnostniZalozky";
constexpr auto pathsKey = "slozky.povolene";

class SlozkyTest : public SlozkyFixture {
  protected:
    void choose(Slozky& slozky, std::vector<std::string> answer) {
        picker.answers.push_back(std::move(answer));
        EXPECT_TRUE(executor.run(slozky.pridat()));
    }

    std::vector<std::string> savedPaths() const { return defaults.texts(pathsKey).value(); }

    std::vector<std::string> savedBookmarks() const {
        std::vector<std::string> texts;
        auto saved = defaults.dataList(bookmarksKey).value();
        for (const auto& bytes : saved) texts.emplace_back(asText(bytes));
        return texts;
    }

    void store(const std::vector<std::string>& bookmarkPaths, const std::vector<std::string>& paths) {
        std::vector<DefaultsItem> stored;
        for (const auto& path : bookmarkPaths) stored.emplace_back(toBytes("bookmark 0 " + path));
        defaults.set(bookmarksKey, stored);
        defaults.set(pathsKey, std::vector<DefaultsItem>(paths.begin(), paths.end()));
    }
};

TEST_F(SlozkyTest, StartsWithNothingAllowed) {
    auto slozky = load();
    EXPECT_THAT(slozky->povolene(), IsEmpty());
    EXPECT_THAT(slozky->aliasy(), IsEmpty());
    EXPECT_FALSE(slozky->obsahuje(a));
    EXPECT_EQ(slozky->slozkaProAlias({}), std::nullopt);
    EXPECT_THAT(savedPaths(), IsEmpty());
    EXPECT_THAT(savedBookmarks(), IsEmpty());
}

TEST_F(SlozkyTest, ThePanelAsksInTheWordsOfTheSystem) {
    auto slozky = load();
    choose(*slozky, {a});
    ASSERT_EQ(picker.questions.size(), 1U);
    EXPECT_EQ(picker.questions[0].prompt, "Povolit");
    EXPECT_EQ(picker.questions[0].message, "Vyber složky, ve kterých smí Morvex pracovat.");
    EXPECT_EQ(picker.questions[0].startAt, std::nullopt);
}

TEST_F(SlozkyTest, ChosenFoldersAreAllowedSavedAndAccessed) {
    auto slozky = load();
    int changes = 0;
    const auto connection = slozky->priZmene([&] { ++changes; });
    choose(*slozky, {a + "/", tree.path("a/../b")});
    EXPECT_THAT(slozky->povolene(), ElementsAre(a, b));
    EXPECT_THAT(slozky->aliasy(), ElementsAre("a", "b"));
    EXPECT_THAT(savedPaths(), ElementsAre(a, b));
    EXPECT_THAT(savedBookmarks(), ElementsAre("bookmark 1 " + a, "bookmark 2 " + b));
    EXPECT_EQ(bookmarks.held, (std::map<std::string, int>{{a, 1}, {b, 1}}));
    EXPECT_EQ(changes, 1);
    EXPECT_TRUE(slozky->obsahuje(a + "/file"));
    EXPECT_EQ(slozky->slozkaProAlias("B"), b);
}

TEST_F(SlozkyTest, PathsAndBookmarksAreKeptInOneSave) {
    auto slozky = load();
    auto writes = defaults.writes;
    choose(*slozky, {a, b});
    EXPECT_EQ(defaults.writes, writes + 1);
    slozky->odebrat(a);
    EXPECT_EQ(defaults.writes, writes + 2);
}

TEST_F(SlozkyTest, GivingUpChangesNothing) {
    auto slozky = load();
    int writes = defaults.writes;
    const auto connection = slozky->priZmene([] { ADD_FAILURE() << "nothing changed"; });
    choose(*slozky, {});
    EXPECT_THAT(slozky->povolene(), IsEmpty());
    EXPECT_EQ(defaults.writes, writes);
}

TEST_F(SlozkyTest, AddingTwiceLeavesOneEntryAndOneHeldAccess) {
    auto slozky = load();
    choose(*slozky, {a});
    choose(*slozky, {a, a});
    EXPECT_THAT(slozky->povolene(), ElementsAre(a));
    EXPECT_THAT(bookmarks.calls,
                ElementsAre("start " + a, "stop " + a, "start " + a, "stop " + a, "start " + a));
    EXPECT_EQ(bookmarks.held, (std::map<std::string, int>{{a, 1}}));
    EXPECT_THAT(savedBookmarks(), ElementsAre("bookmark 3 " + a));
}

TEST_F(SlozkyTest, APermissionThatCannotBeSavedIsToldAndTheOthersAreAdded) {
    auto slozky = load();
    bookmarks.refusals[a] = "disk je plný";
    choose(*slozky, {a, b});
    EXPECT_EQ(slozky->chybaOpravneni(), "Oprávnění ke složce a se nepodařilo uložit: disk je plný");
    EXPECT_THAT(slozky->povolene(), ElementsAre(b));
    EXPECT_THAT(savedPaths(), ElementsAre(b));
}

TEST_F(SlozkyTest, TheNextPanelClearsTheTroubleOfTheLastAndTellsIt) {
    auto slozky = load();
    bookmarks.refusals[a] = "disk je plný";
    choose(*slozky, {a});
    int changes = 0;
    const auto connection = slozky->priZmene([&] { ++changes; });
    choose(*slozky, {});
    EXPECT_EQ(slozky->chybaOpravneni(), std::nullopt);
    EXPECT_EQ(changes, 1);
}

TEST_F(SlozkyTest, RemovingForgetsTheFolderAndEndsItsAccess) {
    auto slozky = load();
    choose(*slozky, {a, b});
    int changes = 0;
    const auto connection = slozky->priZmene([&] { ++changes; });
    slozky->odebrat(a + "/.");
    EXPECT_THAT(slozky->povolene(), ElementsAre(b));
    EXPECT_THAT(savedPaths(), ElementsAre(b));
    EXPECT_THAT(savedBookmarks(), ElementsAre("bookmark 2 " + b));
    EXPECT_EQ(bookmarks.held, (std::map<std::string, int>{{b, 1}}));
    EXPECT_EQ(changes, 1);
    EXPECT_FALSE(slozky->obsahuje(a));
}

TEST_F(SlozkyTest, AllAccessEndsWithTheObject) {
    auto slozky = load();
    bookmarks.inaccessible.insert(b);
    choose(*slozky, {a, b});
    slozky.reset();
    EXPECT_THAT(bookmarks.held, IsEmpty());
    EXPECT_THAT(bookmarks.calls, ElementsAre("start " + a, "start " + b, "stop " + a));
}

TEST_F(SlozkyTest, FoldersComeBackAtTheNextStart) {
    choose(*load(), {b, a});
    auto slozky = load();
    EXPECT_THAT(slozky->povolene(), ElementsAre(b, a));
    EXPECT_THAT(slozky->vyzadujiObnoveni(), IsEmpty());
    EXPECT_EQ(bookmarks.held, (std::map<std::string, int>{{a, 1}, {b, 1}}));
}

TEST_F(SlozkyTest, APathWithoutABookmarkIsAllowedAndNeedsRenewal) {
    store({b}, {a, b});
    auto slozky = load();
    EXPECT_THAT(slozky->povolene(), ElementsAre(b, a));
    EXPECT_THAT(slozky->vyzadujiObnoveni(), ElementsAre(a));
    EXPECT_TRUE(slozky->obsahuje(a + "/file"));
    EXPECT_THAT(savedPaths(), ElementsAre(b, a));
    EXPECT_THAT(savedBookmarks(), ElementsAre("bookmark 0 " + b));
}

TEST_F(SlozkyTest, RenewalOpensThePanelThereAndEndsTheNeed) {
    store({}, {a});
    auto slozky = load();
    choose(*slozky, {a});
    EXPECT_EQ(picker.questions[0].startAt, a);
    EXPECT_THAT(slozky->vyzadujiObnoveni(), IsEmpty());
    EXPECT_THAT(slozky->povolene(), ElementsAre(a));
    EXPECT_THAT(savedBookmarks(), ElementsAre("bookmark 1 " + a));
}

TEST_F(SlozkyTest, RemovingAFolderEndsItsNeedOfRenewal) {
    store({}, {a});
    auto slozky = load();
    slozky->odebrat(a);
    EXPECT_THAT(slozky->vyzadujiObnoveni(), IsEmpty());
    EXPECT_THAT(slozky->povolene(), IsEmpty());
}

TEST_F(SlozkyTest, ABookmarkThatNoLongerResolvesIsDroppedQuietly) {
    store({a, b}, {a, b});
    bookmarks.unresolvable.insert(a);
    auto slozky = load();
    EXPECT_THAT(slozky->povolene(), ElementsAre(b, a));
    EXPECT_THAT(slozky->vyzadujiObnoveni(), ElementsAre(a));
    EXPECT_EQ(slozky->chybaOpravneni(), std::nullopt);
    EXPECT_THAT(savedBookmarks(), ElementsAre("bookmark 0 " + b));
}

TEST_F(SlozkyTest, ADeletedFolderIsGoneFromBothKeysAfterTheNextStart) {
    choose(*load(), {a, b});
    std::filesystem::remove(a);
    auto slozky = load();
    EXPECT_THAT(slozky->povolene(), ElementsAre(b));
    EXPECT_THAT(savedPaths(), ElementsAre(b));
    EXPECT_THAT(savedBookmarks(), ElementsAre("bookmark 2 " + b));
}

TEST_F(SlozkyTest, AFolderThatMayNotBeLookedAtNowIsNotForgotten) {
    const auto inner = tree.folder("closed/inner");
    store({}, {inner});
    tree.close("closed");
    const PlainUser user;
    auto slozky = load();
    EXPECT_THAT(slozky->povolene(), ElementsAre(inner));
    EXPECT_THAT(savedPaths(), ElementsAre(inner));
}

TEST_F(SlozkyTest, AFileInPlaceOfTheFolderIsNotAllowed) {
    tree.file("file", "");
    store({tree.path("file")}, {tree.path("file")});
    EXPECT_THAT(load()->povolene(), IsEmpty());
}

TEST_F(SlozkyTest, PathsThatAreNotAbsoluteAreNotAllowed) {
    store({}, {"", ".", "tmp", a + std::string("\0", 1)});
    EXPECT_THAT(load()->povolene(), IsEmpty());
}

TEST_F(SlozkyTest, LoadedPathsAreStandardizedAndNotDoubled) {
    store({a + "/../a", a}, {a, a + "/", b, b});
    auto slozky = load();
    EXPECT_THAT(slozky->povolene(), ElementsAre(a, b));
    EXPECT_THAT(savedBookmarks(), ElementsAre("bookmark 0 " + a + "/../a"));
    EXPECT_EQ(bookmarks.held, (std::map<std::string, int>{{a, 1}}));
}

TEST_F(SlozkyTest, AListWithOneForeignElementCountsAsAbsent) {
    defaults.set(bookmarksKey, std::vector<DefaultsItem>{toBytes("bookmark 0 " + a), std::string("text")});
    defaults.set(pathsKey, std::vector<DefaultsItem>{b, toBytes("data")});
    EXPECT_THAT(load()->povolene(), IsEmpty());
}

TEST_F(SlozkyTest, AStaleBookmarkIsMadeAnewAndUsed) {
    store({a}, {a});
    bookmarks.stale.insert(a);
    auto slozky = load();
    EXPECT_THAT(savedBookmarks(), ElementsAre("bookmark 1 " + a));
    EXPECT_THAT(slozky->vyzadujiObnoveni(), IsEmpty());
}

TEST_F(SlozkyTest, AStaleBookmarkThatCannotBeMadeAnewIsKept) {
    store({a}, {a});
    bookmarks.stale.insert(a);
    bookmarks.refusals[a] = "ne";
    auto slozky = load();
    EXPECT_THAT(savedBookmarks(), ElementsAre("bookmark 0 " + a));
    EXPECT_EQ(slozky->chybaOpravneni(), std::nullopt);
}

TEST_F(SlozkyTest, AMovedFolderIsAllowedWhereItIsNow) {
    store({a}, {a});
    bookmarks.moved[a] = b;
    std::filesystem::remove(a);
    EXPECT_THAT(load()->povolene(), ElementsAre(b));
    EXPECT_THAT(savedPaths(), ElementsAre(b));
}

TEST_F(SlozkyTest, AFolderThatSomebodyReplacedNeedsRenewal) {
    InodeBookmarks inodes;
    picker.answers.push_back({a});
    {
        auto slozky = Slozky::create(defaults, inodes, picker, tree.standard);
        ASSERT_TRUE(executor.run(slozky->pridat()));
    }
    EXPECT_THAT(Slozky::create(defaults, inodes, picker, tree.standard)->vyzadujiObnoveni(), IsEmpty());
    std::filesystem::rename(a, tree.path("old"));
    tree.folder("a");
    auto slozky = Slozky::create(defaults, inodes, picker, tree.standard);
    EXPECT_THAT(slozky->povolene(), ElementsAre(a));
    EXPECT_THAT(slozky->vyzadujiObnoveni(), ElementsAre(a));
}

TEST_F(SlozkyTest, ASnapshotKeepsTheFoldersOfItsMoment) {
    auto slozky = load();
    choose(*slozky, {a});
    auto snapshot = slozky->snapshot();
    slozky->odebrat(a);
    EXPECT_TRUE(snapshot.obsahuje(a + "/file"));
    EXPECT_FALSE(slozky->obsahuje(a + "/file"));
}

/// Folders whose disk works when the test lets it.
class SlowSlozkyTest : public testing::Test, public SlowDefaults {
  protected:
    /// Starts to allow what the person chooses.
    void choose(std::vector<std::string> answer) {
        picker.answers.push_back(std::move(answer));
        home.start(slozky->pridat());
        home.runUntilIdle();
    }

    [[nodiscard]] std::vector<std::string> keptPaths() const {
        return kept().texts(pathsKey).value_or(std::vector<std::string>());
    }

    FileTree tree;
    std::string a = tree.folder("a");
    std::string b = tree.folder("b");
    MemoryBookmarks bookmarks;
    FakeFolderPicker picker;
    std::unique_ptr<Slozky> slozky = Slozky::create(defaults, bookmarks, picker, tree.standard);
};

TEST_F(SlowSlozkyTest, AFolderIsAllowedOnceThatIsSaved) {
    write();
    choose({a});
    EXPECT_FALSE(slozky->obsahuje(a));
    EXPECT_THAT(bookmarks.held, IsEmpty());
    write();
    EXPECT_TRUE(slozky->obsahuje(a));
    EXPECT_THAT(keptPaths(), ElementsAre(a));
}

TEST_F(SlowSlozkyTest, AFolderThatCannotBeSavedIsNotAllowedAndThatIsTold) {
    write();
    int changes = 0;
    const auto connection = slozky->priZmene([&changes] { ++changes; });
    breakSaves();
    choose({a});
    write();
    EXPECT_FALSE(slozky->obsahuje(a));
    EXPECT_EQ(slozky->chybaOpravneni(),
              "Oprávnění ke složce a se nepodařilo uložit: " + SystemError{EISDIR}.popis().czech());
    EXPECT_EQ(changes, 1);
    mendSaves();
    retry();
    EXPECT_THAT(keptPaths(), IsEmpty());
}

TEST_F(SlowSlozkyTest, ARemovedFolderIsGoneAtOnceAndOnTheDiskAsSoonAsThatWorks) {
    choose({a, b});
    write();
    write();
    breakSaves();
    slozky->odebrat(a);
    EXPECT_FALSE(slozky->obsahuje(a));
    write();
    EXPECT_TRUE(defaults.problem());
    mendSaves();
    retry();
    EXPECT_THAT(keptPaths(), ElementsAre(b));
}

TEST_F(SlowSlozkyTest, AFolderThatIsRemovedWhileAnotherIsSavedStaysRemoved) {
    choose({a});
    write();
    write();
    choose({b});
    disk.runUntilIdle();
    slozky->odebrat(a);
    for (int save = 0; save < 3; ++save) write();
    EXPECT_THAT(slozky->povolene(), ElementsAre(b));
    EXPECT_THAT(keptPaths(), ElementsAre(b));
}

TEST_F(SlowSlozkyTest, TwoChoicesAtOnceAreBothSaved) {
    choose({a});
    choose({b});
    for (int save = 0; save < 4; ++save) write();
    EXPECT_THAT(slozky->povolene(), ElementsAre(a, b));
    EXPECT_THAT(keptPaths(), ElementsAre(a, b));
}

} // namespace
} // namespace morvex
