#include "app/execution/FileSearch.h"

#include "app/execution/SouboryBridge.h"
#include "platform/memory/ManualExecutor.h"
#include "shared/wire/TalkSpanError.h"
#include "tests/app/execution/FileTree.h"
#include "tests/support/PlainUser.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

namespace morvex {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

using Found = std::vector<std::string>;

class FileSearchTest : public testing::Test {
  protected:
    Found search(const std::optional<std::string>& query, int limit = 50) {
        return executor.run(files.hledej(query, {}, limit, tree.allowed(), {})).value().value();
    }

    std::string refusal(const std::optional<std::string>& slozka, const AllowedFolders& slozky) {
        auto result = executor.run(files.hledej("a", slozka, 50, slozky, {})).value();
        return result ? "" : result.error().popis().czech();
    }

    Found walk(FileSearch::Limits limits) const {
        auto folder = BeneathFolder::open(tree.path("home/Projects"));
        return FileSearch("", limits).run(*folder, {}).value();
    }

    FileTree tree;
    ManualExecutor executor;
    SouboryBridge files{executor};
};

TEST_F(FileSearchTest, AnAbsentOrEmptyQueryMatchesEveryFile) {
    tree.file("home/Projects/a.txt", "");
    tree.file("home/Projects/b/c/d.txt", "");
    EXPECT_THAT(search({}), UnorderedElementsAre("a.txt", "b/c/d.txt"));
    EXPECT_THAT(search(""), UnorderedElementsAre("a.txt", "b/c/d.txt"));
}

TEST_F(FileSearchTest, TheQueryIsAPartOfTheNameWithoutRegardToCase) {
    tree.file("home/Projects/Report.TXT", "needle");
    tree.file("home/Projects/report/other", "");
    tree.file("home/Projects/needle", "");
    EXPECT_THAT(search("REPORT.t"), ElementsAre("Report.TXT"));
    EXPECT_THAT(search("needle"), ElementsAre("needle"));
    EXPECT_THAT(search("rep*"), IsEmpty());
    EXPECT_THAT(search(" report"), IsEmpty());
}

TEST_F(FileSearchTest, DiacriticsCountInAnyNormalForm) {
    tree.file("home/Projects/re\u0301sume\u0301", "");
    EXPECT_THAT(search("RÉSUMÉ"), ElementsAre("re\u0301sume\u0301"));
    EXPECT_THAT(search("resume"), IsEmpty());
}

TEST_F(FileSearchTest, HiddenEntriesAreNotWalked) {
    tree.file("home/Projects/.ssh/id_rsa", "");
    tree.file("home/Projects/.hidden", "");
    tree.file("home/Projects/a/.b/c", "");
    EXPECT_THAT(search(""), IsEmpty());
}

TEST_F(FileSearchTest, LinksAreNeitherFollowedNorListed) {
    tree.file("outside/secret", "");
    tree.file("home/Projects/real", "");
    tree.link("home/Projects/folder", tree.path("outside"));
    tree.link("home/Projects/file", "real");
    tree.link("home/Projects/loop", ".");
    EXPECT_THAT(search(""), ElementsAre("real"));
}

TEST_F(FileSearchTest, OnlyRegularFilesAreListed) {
    ASSERT_EQ(::mkfifo(tree.path("home/Projects/pipe").c_str(), 0600), 0);
    tree.folder("home/Projects/folder");
    EXPECT_THAT(search(""), IsEmpty());
}

TEST_F(FileSearchTest, ContentsOfPackagesAreNotWalked) {
    tree.file("home/Projects/Program.app/Contents/Info.plist", "");
    tree.file("home/Projects/Code.XCODEPROJ/project", "");
    tree.file("home/Projects/lib.framework/lib", "");
    tree.file("home/Projects/my.application/file", "");
    tree.file("home/Projects/file.app", "");
    EXPECT_THAT(search(""), UnorderedElementsAre("my.application/file", "file.app"));
}

TEST_F(FileSearchTest, TheLimitEndsTheWalk) {
    for (int i = 0; i < 20; ++i) tree.file("home/Projects/" + std::to_string(i), "");
    EXPECT_THAT(search("", 7), SizeIs(7));
    EXPECT_THAT(search("", 20), SizeIs(20));
    EXPECT_THAT(search("", 0), IsEmpty());
    EXPECT_THAT(search("", -1), IsEmpty());
}

TEST_F(FileSearchTest, VisitedEntriesAreBounded) {
    for (int i = 0; i < 20; ++i) tree.file("home/Projects/" + std::to_string(i), "");
    EXPECT_THAT(walk({.found = 50, .visited = 10}),
                testing::SizeIs(testing::AllOf(testing::Ge(8U), testing::Le(10U))));
    EXPECT_THAT(walk({.found = 50, .visited = 100}), SizeIs(20));
}

TEST_F(FileSearchTest, DepthIsBounded) {
    tree.file("home/Projects/a/b/c", "");
    tree.file("home/Projects/a/d", "");
    EXPECT_THAT(walk({.found = 50, .depth = 2}), ElementsAre("a/d"));

    FileDescriptor here(::open(tree.path("home/Projects").c_str(), O_DIRECTORY | O_CLOEXEC));
    for (int i = 0; i < 300; ++i) {
        ASSERT_EQ(::mkdirat(here.get(), "deep", 0700), 0);
        here = FileDescriptor(::openat(here.get(), "deep", O_DIRECTORY | O_CLOEXEC));
    }
    EXPECT_THAT(search(""), UnorderedElementsAre("a/b/c", "a/d"));
}

TEST_F(FileSearchTest, NamesAreRepairedToText) {
    tree.file("home/Projects/a\xff/b\xfe.txt", "");
    EXPECT_THAT(search("b\xfe"), ElementsAre("a\ufffd/b\ufffd.txt"));
}

TEST_F(FileSearchTest, AQueryLongerThanAnyNameFindsNothing) {
    tree.file("home/Projects/a", "");
    EXPECT_THAT(search(std::string(10'000'000, 'a')), IsEmpty());
    tree.file("home/Projects/" + std::string(255, 'a'), "");
    EXPECT_THAT(search(std::string(255, 'A')), SizeIs(1));
}

TEST_F(FileSearchTest, AMissingFolderGivesAnEmptyList) {
    std::filesystem::remove_all(tree.path("home/Projects"));
    EXPECT_THAT(search(""), IsEmpty());
}

TEST_F(FileSearchTest, AFolderThatIsALinkIsSearched) {
    tree.file("outside/a", "");
    tree.link("home/way", tree.path("outside"));
    auto result = executor.run(files.hledej({}, {}, 50, tree.allowed({"home/way"}), {}));
    EXPECT_THAT(result->value(), ElementsAre("a"));
}

TEST_F(FileSearchTest, WithoutAFolderTheAllowedOnesAreTold) {
    auto two = tree.allowed({"home/Projects", "outside"});
    EXPECT_EQ(refusal({}, two), "Neurčil jsi složku. Povolené: Projects, outside.");
    EXPECT_EQ(refusal("Music", two), "Neurčil jsi složku. Povolené: Projects, outside.");
    EXPECT_EQ(refusal("Music", tree.allowed()), "Neurčil jsi složku. Povolené: Projects.");
    EXPECT_EQ(refusal({}, tree.allowed({})), "Na Macu není povolená žádná složka.");
}

TEST_F(FileSearchTest, TheFolderThatIsNamedIsWalked) {
    tree.file("home/Projects/first", "");
    tree.file("outside/second", "");
    const auto two = tree.allowed({"home/Projects", "outside"});
    auto found = [&](const std::string& slozka) {
        return executor.run(files.hledej({}, slozka, 50, two, {})).value().value();
    };
    EXPECT_THAT(found("Projects"), ElementsAre("first"));
    EXPECT_THAT(found("outside"), ElementsAre("second"));
}

TEST_F(FileSearchTest, AFolderThatCannotBeReadIsPassedOver) {
    for (const std::string name : {"a", "b", "c"}) tree.file("home/Projects/" + name + "/file", "");
    tree.file("home/Projects/file", "");
    tree.close("home/Projects/b");
    {
        const PlainUser user;
        EXPECT_THAT(search(""), UnorderedElementsAre("file", "a/file", "c/file"));
    }
    std::filesystem::permissions(tree.path("home/Projects/b"), std::filesystem::perms::owner_all);
    tree.close("home/Projects");
    {
        const PlainUser user;
        EXPECT_THAT(search(""), IsEmpty());
    }
    std::filesystem::permissions(tree.path("home/Projects"), std::filesystem::perms::owner_all);
}

TEST_F(FileSearchTest, AStopEndsTheWalk) {
    tree.file("home/Projects/a", "");
    std::stop_source stop;
    stop.request_stop();
    auto result = executor.run(files.hledej({}, {}, 50, tree.allowed(), stop.get_token())).value();
    ASSERT_FALSE(result);
    const auto* known = result.error().as<TalkSpanError>();
    ASSERT_NE(known, nullptr);
    EXPECT_TRUE(known->as<TalkSpanError::Cancelled>());
}

} // namespace
} // namespace morvex
