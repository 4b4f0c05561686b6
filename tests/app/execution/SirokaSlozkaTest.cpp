#include "app/execution/SirokaSlozka.h"

#include "tests/app/execution/FileTree.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

using enum SirokaSlozka::Dosah;

std::optional<SirokaSlozka::Dosah> reach(const std::string& slozka, const StandardFolders& standard) {
    const auto siroka = SirokaSlozka::posoud(slozka, standard);
    if (siroka) EXPECT_EQ(siroka->slozka, slozka) << "the person sees what was chosen";
    return siroka ? std::optional(siroka->dosah) : std::nullopt;
}

TEST(SirokaSlozka, IsTheDiskTheHomeFolderAndWhateverHoldsThat) {
    FileTree tree;
    EXPECT_EQ(reach("/", tree.standard), disk);
    EXPECT_EQ(reach(tree.path("home"), tree.standard), domov);
    EXPECT_EQ(reach(tree.path(""), tree.standard), nadDomovem);
    EXPECT_EQ(reach("/tmp", tree.standard).has_value(), tree.path("home").starts_with("/tmp/"));
}

TEST(SirokaSlozka, IsNoFolderBelowOrBesideTheHomeFolder) {
    FileTree tree;
    tree.folder("home/Projects/home");
    tree.folder("home2");
    tree.folder("hom");
    for (const auto* name : {"home/Projects", "home/Projects/home", "outside", "home2", "hom", "missing"})
        EXPECT_EQ(reach(tree.path(name), tree.standard), std::nullopt) << name;
}

TEST(SirokaSlozka, IsJudgedWhereItsPathLeads) {
    FileTree tree;
    tree.link("outside/to-home", tree.path("home"));
    tree.link("outside/to-disk", "/");
    tree.link("outside/loop", "loop");
    EXPECT_EQ(reach(tree.path("home/"), tree.standard), domov);
    EXPECT_EQ(reach(tree.path("home/Projects/.."), tree.standard), domov);
    EXPECT_EQ(reach(tree.path("outside/to-home"), tree.standard), domov);
    EXPECT_EQ(reach(tree.path("outside/to-home/Projects"), tree.standard), std::nullopt);
    EXPECT_EQ(reach(tree.path("outside/to-disk"), tree.standard), disk);
    EXPECT_EQ(reach("/proc/self/root", tree.standard), disk);
    EXPECT_EQ(reach("//..//", tree.standard), disk);
    EXPECT_EQ(reach(tree.path("outside/loop"), tree.standard), std::nullopt);
}

TEST(SirokaSlozka, AHomeFolderThatIsALinkIsWhereItLeads) {
    FileTree tree;
    tree.folder("disk/eva");
    tree.link("eva", tree.path("disk/eva"));
    tree.standard.homeFolder = tree.path("eva");
    EXPECT_EQ(reach(tree.path("disk/eva"), tree.standard), domov);
    EXPECT_EQ(reach(tree.path("disk"), tree.standard), nadDomovem);
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

TEST(SirokaSlozka, BothHomeFoldersCount) {
    FileTree tree;
    EXPECT_EQ(reach(tree.path("home"), TwoHomes(tree)), domov);
    EXPECT_EQ(reach(tree.path("outside"), TwoHomes(tree)), domov);
}

TEST(SirokaSlozka, SaysWhatAllowingMeans) {
    const auto words = [](SirokaSlozka::Dosah dosah) { return SirokaSlozka{"/x", dosah}.popis().czech(); };
    EXPECT_EQ(words(disk), "To je celý disk: telefon se pak dostane ke všemu, k čemu se tu dostaneš ty.");
    EXPECT_EQ(words(domov), "To je tvoje domovská složka: telefon se pak dostane ke všem tvým souborům.");
    EXPECT_EQ(words(nadDomovem),
              "V téhle složce leží tvoje domovská: telefon se pak dostane ke všem tvým souborům.");
}

} // namespace
} // namespace morvex
