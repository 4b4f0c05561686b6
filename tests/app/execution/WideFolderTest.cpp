#include "app/execution/WideFolder.h"

#include "tests/app/execution/FileTree.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

using enum WideFolder::Reach;

std::optional<WideFolder::Reach> reach(const std::string& slozka, const StandardFolders& standard) {
    const auto wideFolder = WideFolder::judge(slozka, standard);
    if (wideFolder) EXPECT_EQ(wideFolder->slozka, slozka) << "the person sees what was chosen";
    return wideFolder ? std::optional(wideFolder->reach) : std::nullopt;
}

TEST(WideFolder, IsTheDiskTheHomeFolderAndWhateverHoldsThat) {
    FileTree tree;
    EXPECT_EQ(reach("/", tree.standard), disk);
    EXPECT_EQ(reach(tree.path("home"), tree.standard), homeFolder);
    EXPECT_EQ(reach(tree.path(""), tree.standard), aboveHome);
    EXPECT_EQ(reach("/tmp", tree.standard).has_value(), tree.path("home").starts_with("/tmp/"));
}

TEST(WideFolder, IsNoFolderBelowOrBesideTheHomeFolder) {
    FileTree tree;
    tree.folder("home/Projects/home");
    tree.folder("home2");
    tree.folder("hom");
    for (const auto* name : {"home/Projects", "home/Projects/home", "outside", "home2", "hom", "missing"})
        EXPECT_EQ(reach(tree.path(name), tree.standard), std::nullopt) << name;
}

TEST(WideFolder, IsJudgedWhereItsPathLeads) {
    FileTree tree;
    tree.link("outside/to-home", tree.path("home"));
    tree.link("outside/to-disk", "/");
    tree.link("outside/loop", "loop");
    EXPECT_EQ(reach(tree.path("home/"), tree.standard), homeFolder);
    EXPECT_EQ(reach(tree.path("home/Projects/.."), tree.standard), homeFolder);
    EXPECT_EQ(reach(tree.path("outside/to-home"), tree.standard), homeFolder);
    EXPECT_EQ(reach(tree.path("outside/to-home/Projects"), tree.standard), std::nullopt);
    EXPECT_EQ(reach(tree.path("outside/to-disk"), tree.standard), disk);
    EXPECT_EQ(reach("/proc/self/root", tree.standard), disk);
    EXPECT_EQ(reach("//..//", tree.standard), disk);
    EXPECT_EQ(reach(tree.path("outside/loop"), tree.standard), std::nullopt);
}

TEST(WideFolder, AHomeFolderThatIsALinkIsWhereItLeads) {
    FileTree tree;
    tree.folder("disk/eva");
    tree.link("eva", tree.path("disk/eva"));
    tree.standard.homeFolder = tree.path("eva");
    EXPECT_EQ(reach(tree.path("disk/eva"), tree.standard), homeFolder);
    EXPECT_EQ(reach(tree.path("disk"), tree.standard), aboveHome);
}

/// The environment names another home folder than the account has.
struct TwoHomes final : StandardFolders {
    explicit TwoHomes(const FileTree& tree) : tree(tree) {}

    [[nodiscard]] std::string home() const override { return tree.path("home"); }

    [[nodiscard]] std::string accountHome() const override { return tree.path("outside"); }

    [[nodiscard]] std::optional<std::string> homeOf(const std::string&) const override { return {}; }

    [[nodiscard]] std::optional<std::string> desktop() const override { return {}; }

    [[nodiscard]] std::string applicationSupport() const override { return {}; }

    [[nodiscard]] std::string configuration() const override { return {}; }

    const FileTree& tree;
};

TEST(WideFolder, BothHomeFoldersCount) {
    FileTree tree;
    EXPECT_EQ(reach(tree.path("home"), TwoHomes(tree)), homeFolder);
    EXPECT_EQ(reach(tree.path("outside"), TwoHomes(tree)), homeFolder);
}

TEST(WideFolder, SaysWhatAllowingMeans) {
    const auto words = [](WideFolder::Reach reach) { return WideFolder{"/x", reach}.popis().czech(); };
    EXPECT_EQ(words(disk), "To je celý disk: telefon se pak dostane ke všemu, k čemu se tu dostaneš ty.");
    EXPECT_EQ(words(homeFolder),
              "To je tvoje domovská složka: telefon se pak dostane ke všem tvým souborům.");
    EXPECT_EQ(words(aboveHome),
              "V téhle složce leží tvoje domovská: telefon se pak dostane ke všem tvým souborům.");
}

} // namespace
} // namespace morvex
