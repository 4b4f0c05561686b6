#include "foundation/Paths.h"

#include "tests/support/FolderTree.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(Paths, StandardizingTakesOutDotsAndEmptyComponentsByTheTextAlone) {
    struct Case {
        const char* path;
        const char* standard;
    };

    for (auto [path, standard] : {Case{"/a/b", "/a/b"}, Case{"//a///b//", "/a/b"}, Case{"/a/./b/.", "/a/b"},
                                  Case{"/a/b/../c", "/a/c"}, Case{"/../../a", "/a"}, Case{"/a/..", "/"},
                                  Case{"/", "/"}, Case{"/a/...", "/a/..."}, Case{"/.a/..b", "/.a/..b"}})
        EXPECT_EQ(paths::standardized(path), standard) << path;
}

TEST(Paths, TheLastComponentIsTextForAPerson) {
    EXPECT_EQ(paths::lastComponent("/a/b.txt"), "b.txt");
    EXPECT_EQ(paths::lastComponent("/a/b/"), "b");
    EXPECT_EQ(paths::lastComponent("b"), "b");
    EXPECT_EQ(paths::lastComponent("/"), "/");
    EXPECT_EQ(paths::lastComponent(""), "");
    EXPECT_EQ(paths::lastComponent("/a/\xff"), "\ufffd");
}

TEST(Paths, BelowPutsOneSlashBetween) {
    EXPECT_EQ(paths::below("/a", "b/c"), "/a/b/c");
    EXPECT_EQ(paths::below("/", "b"), "/b");
    EXPECT_EQ(paths::below("/a", ""), "/a");
}

TEST(Paths, ResolvingFollowsChainsOfLinksToTheirEnd) {
    FolderTree tree;
    tree.file("outside/secret", "");
    tree.link("home/one", "two");
    tree.link("home/two", "../home/three");
    tree.link("home/three", tree.path("outside"));
    EXPECT_EQ(paths::resolved(tree.path("home/one/secret")), tree.path("outside/secret"));
}

TEST(Paths, ResolvingTakesDotsOfALinkFromWhereTheLinkReallyLies) {
    FolderTree tree;
    tree.folder("outside/deep/er");
    tree.link("home/in", tree.path("outside/deep/er"));
    tree.link("outside/deep/er/up", "../../secret");
    EXPECT_EQ(paths::resolved(tree.path("home/in/up")), tree.path("outside/secret"));
}

TEST(Paths, ResolvingFollowsALinkWhoseTargetDoesNotExistYet) {
    FolderTree tree;
    tree.link("home/Projects/new", tree.path("outside/not/yet"));
    EXPECT_EQ(paths::resolved(tree.path("home/Projects/new/file")), tree.path("outside/not/yet/file"));
}

TEST(Paths, ResolvingLooksAgainBehindAMissingFolderThatALinkGoesBackFrom) {
    FolderTree tree;
    tree.link("home/Projects/away", tree.path("outside"));
    tree.link("home/Projects/trick", "missing/../away/file");
    EXPECT_EQ(paths::resolved(tree.path("home/Projects/trick")), tree.path("outside/file"));
}

TEST(Paths, ResolvingKeepsWhatDoesNotExist) {
    FolderTree tree;
    EXPECT_EQ(paths::resolved(tree.path("no/such/../file")), tree.path("no/file"));
    EXPECT_EQ(paths::resolved("/"), "/");
    std::string name(300, 'x');
    EXPECT_EQ(paths::resolved("/" + name), "/" + name);
}

TEST(Paths, ALoopOfLinksResolvesToNothing) {
    FolderTree tree;
    tree.link("home/a", "b");
    tree.link("home/b", "a");
    tree.link("home/self", "self/self");
    EXPECT_EQ(paths::resolved(tree.path("home/a")), std::nullopt);
    EXPECT_EQ(paths::resolved(tree.path("home/self/x")), std::nullopt);
}

TEST(Paths, AChainIsFollowedAsFarAsTheSystemFollowsIt) {
    FolderTree tree;
    tree.file("home/link0", "");
    for (int i = 1; i <= 41; ++i) tree.link("home/link" + std::to_string(i), "link" + std::to_string(i - 1));
    EXPECT_EQ(paths::resolved(tree.path("home/link40")), tree.path("home/link0"));
    EXPECT_TRUE(std::filesystem::exists(tree.path("home/link40")));
    EXPECT_EQ(paths::resolved(tree.path("home/link41")), std::nullopt);
}

TEST(Paths, AMillionComponentsAreResolvedWithoutLookingBelowWhatIsMissing) {
    std::string path = "/nonexistent";
    for (int i = 0; i < 1'000'000; ++i) path += "/a";
    EXPECT_EQ(paths::resolved(path), path);
}

TEST(Paths, ANulByteEndsNoPath) {
    FolderTree tree;
    tree.link("home/link", tree.path("outside"));
    auto path = tree.path("home/link") + std::string("\0/x", 3);
    EXPECT_EQ(paths::resolved(path), path);
    EXPECT_FALSE(paths::isFolder(tree.path("outside") + std::string("\0x", 2)));
}

TEST(Paths, AFolderIsRecognizedThroughALink) {
    FolderTree tree;
    tree.file("home/file", "");
    tree.link("home/link", tree.folder("outside"));
    EXPECT_TRUE(paths::isFolder(tree.path("home/link")));
    EXPECT_FALSE(paths::isFolder(tree.path("home/file")));
    EXPECT_FALSE(paths::isFolder(tree.path("home/none")));
    EXPECT_FALSE(paths::isFolder("tmp"));
}

} // namespace
} // namespace morvex
