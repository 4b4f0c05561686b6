#include "app/execution/CheckedPath.h"

#include "app/execution/SouboryChyba.h"
#include "tests/app/execution/FileTree.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

std::string checked(const std::string& path, const AllowedFolders& slozky,
                    const std::optional<std::string>& slozka = {}) {
    auto result = overCestu(path, slozka, slozky);
    return result ? result->cesta : result.error().popis().czech();
}

std::string outside(const std::string& name) {
    return SouboryChyba{SouboryChyba::MimoPovolene{name}}.popis().czech();
}

std::string forbidden(const std::string& fragment) {
    return SouboryChyba{SouboryChyba::ZakazanaCesta{fragment}}.popis().czech();
}

TEST(OverCestu, ABlankPathIsMissing) {
    FileTree tree;
    EXPECT_EQ(checked("", tree.allowed()), "Chybí cesta k souboru.");
    EXPECT_EQ(checked(" \t\n\u2003", tree.allowed()), "Chybí cesta k souboru.");
    EXPECT_EQ(checked("", tree.allowed({})), "Chybí cesta k souboru.");
}

TEST(OverCestu, BlanksAroundAPathAreNotPartOfIt) {
    FileTree tree;
    EXPECT_EQ(checked(" \n" + tree.path("home/Projects/a b") + "\n", tree.allowed()),
              tree.path("home/Projects/a b"));
}

TEST(OverCestu, AnAbsolutePathIgnoresTheNamedFolder) {
    FileTree tree;
    EXPECT_EQ(checked(tree.path("home/Projects/a"), tree.allowed(), "no such folder"),
              tree.path("home/Projects/a"));
    EXPECT_EQ(checked("~/Projects/a", tree.allowed(), "no such folder"), tree.path("home/Projects/a"));
}

TEST(OverCestu, ARelativePathBeginsInTheOnlyFolder) {
    FileTree tree;
    EXPECT_EQ(checked("a//b/", tree.allowed()), tree.path("home/Projects/a/b"));
    EXPECT_EQ(checked("./a", tree.allowed()), tree.path("home/Projects/a"));
    EXPECT_EQ(checked(".", tree.allowed()), tree.path("home/Projects"));
}

TEST(OverCestu, TheFirstComponentBeatsTheNamedFolder) {
    FileTree tree;
    tree.standard.desktopFolder = tree.folder("home/Desktop");
    auto slozky = tree.allowed({"home/Projects", "home/Desktop"});
    EXPECT_EQ(checked("Plocha/poznamka.txt", slozky, "Projects"), tree.path("home/Desktop/poznamka.txt"));
    EXPECT_EQ(checked("poznamka.txt", slozky, "Projects"), tree.path("home/Projects/poznamka.txt"));
    EXPECT_EQ(checked("Projects", slozky, "Plocha"), tree.path("home/Projects"));
    EXPECT_EQ(checked("Projects/Projects/x", slozky), tree.path("home/Projects/Projects/x"));
}

TEST(OverCestu, OfFoldersOfOneNameTheSecondIsNamedWithItsParent) {
    FileTree tree;
    auto slozky = tree.allowed({"osobni/projekt", "prace/projekt"});
    EXPECT_EQ(checked("prace/projekt/a", slozky), tree.path("prace/projekt/a"));
    EXPECT_EQ(checked("Prace/Projekt/a", slozky, "projekt"), tree.path("prace/projekt/a"));
    EXPECT_EQ(checked("a", slozky, "prace/projekt"), tree.path("prace/projekt/a"));
    EXPECT_EQ(checked("projekt/a", slozky, "prace/projekt"), tree.path("osobni/projekt/a"));
    EXPECT_EQ(checked("a", slozky), "Urči povolenou složku. Povolené: projekt, prace/projekt.");
    EXPECT_EQ(checked("prace/projekt/a", tree.allowed({"prace/projekt"})),
              tree.path("prace/projekt/prace/projekt/a"))
        << "without another of its name it has none with a parent";
}

TEST(OverCestu, WithoutABaseTheAllowedFoldersAreTold) {
    FileTree tree;
    auto two = tree.allowed({"home/Projects", "outside"});
    EXPECT_EQ(checked("a", two), "Urči povolenou složku. Povolené: Projects, outside.");
    EXPECT_EQ(checked("a", two, "Music"), "Urči povolenou složku. Povolené: Projects, outside.");
    EXPECT_EQ(checked("a", tree.allowed(), "Music"), "Urči povolenou složku. Povolené: Projects.");
    EXPECT_EQ(checked("a", tree.allowed({})), "Na Macu není povolená žádná složka.");
}

TEST(OverCestu, AnUnknownUserIsAnOrdinaryName) {
    FileTree tree;
    EXPECT_EQ(checked("~nobody/a", tree.allowed()), tree.path("home/Projects/~nobody/a"));
    EXPECT_EQ(checked("~eva/a", tree.allowed()), outside("a"));
    EXPECT_EQ(checked("~eva/a", tree.allowed({"outside"})), tree.path("outside/a"));
}

TEST(OverCestu, DotsCannotLeaveTheFolder) {
    FileTree tree;
    EXPECT_EQ(checked("../../etc/hosts", tree.allowed()), outside("hosts"));
    EXPECT_EQ(checked("Projects/../../etc/hosts", tree.allowed()), outside("hosts"));
    EXPECT_EQ(checked(tree.path("home/Projects/../../outside/a"), tree.allowed()), outside("a"));
    EXPECT_EQ(checked("../../../../../../../../../..", tree.allowed()), outside("/"));
}

TEST(OverCestu, DotsAreTakenBackBeforeLinksAreFollowed) {
    FileTree tree;
    tree.folder("outside/deep");
    tree.link("home/Projects/link", tree.path("outside/deep"));
    EXPECT_EQ(checked("link/../a", tree.allowed()), tree.path("home/Projects/a"));
}

TEST(OverCestu, ASiblingWithTheSamePrefixIsOutside) {
    FileTree tree;
    tree.file("home/ProjectsOld/a", "");
    EXPECT_EQ(checked(tree.path("home/ProjectsOld/a"), tree.allowed()), outside("a"));
    EXPECT_EQ(checked("../ProjectsOld/a", tree.allowed()), outside("a"));
}

TEST(OverCestu, LinksThatLeadOutAreOutside) {
    FileTree tree;
    tree.file("outside/secret", "");
    tree.link("home/Projects/file", tree.path("outside/secret"));
    tree.link("home/Projects/parent", "../../outside");
    tree.link("home/Projects/one", "two");
    tree.link("home/Projects/two", "parent");
    tree.link("home/Projects/dangling", tree.path("outside/not-yet"));
    EXPECT_EQ(checked("file", tree.allowed()), outside("secret"));
    EXPECT_EQ(checked("parent/secret", tree.allowed()), outside("secret"));
    EXPECT_EQ(checked("one/secret", tree.allowed()), outside("secret"));
    EXPECT_EQ(checked("one/new/file", tree.allowed()), outside("file"));
    EXPECT_EQ(checked("dangling", tree.allowed()), outside("not-yet"));
}

TEST(OverCestu, ALinkThatStaysInsideIsResolved) {
    FileTree tree;
    tree.file("home/Projects/real/a", "");
    tree.link("home/Projects/link", "real");
    auto result = overCestu("link/a", {}, tree.allowed());
    ASSERT_TRUE(result);
    EXPECT_EQ(result->cesta, tree.path("home/Projects/real/a"));
    EXPECT_EQ(result->slozka, tree.path("home/Projects"));
    EXPECT_EQ(result->belowFolder(), "real/a");
    EXPECT_EQ(result->jmeno(), "a");
}

TEST(OverCestu, ALoopOfLinksIsOutside) {
    FileTree tree;
    tree.link("home/Projects/a", "b");
    tree.link("home/Projects/b", "a");
    EXPECT_EQ(checked("a", tree.allowed()), outside("a"));
    EXPECT_EQ(checked("b/file", tree.allowed()), outside("file"));
}

TEST(OverCestu, TheRootOfAProcessIsTheRoot) {
    FileTree tree;
    EXPECT_EQ(checked("/proc/self/root/etc/hosts", tree.allowed()), outside("hosts"));
    EXPECT_EQ(checked("/proc/self/root" + tree.path("home/Projects/a"), tree.allowed()),
              tree.path("home/Projects/a"));
    tree.link("home/Projects/root", "/proc/self/root");
    EXPECT_EQ(checked("root/etc/hosts", tree.allowed()), outside("hosts"));
}

TEST(OverCestu, CredentialsAreRefusedEvenInAnAllowedFolder) {
    FileTree tree;
    auto home = tree.allowed({"home"});

    struct Case {
        const char* path;
        const char* fragment;
    };

    for (auto [path, fragment] :
         {Case{"~/Library/Keychains/login.keychain", "/Library/Keychains"}, Case{"~/.ssh/id_rsa", "/.ssh"},
          Case{"~/.aws/credentials", "/.aws"}, Case{"~/.gnupg/trustdb.gpg", "/.gnupg"},
          Case{"~/.config/gh/hosts.yml", "/.config/gh"},
          Case{"~/.docker/config.json", "/.docker/config.json"}, Case{"~/.netrc", "/.netrc"},
          Case{"~/.npmrc", "/.npmrc"}, Case{"~/.pypirc", "/.pypirc"}, Case{"~/.kube/config", "/.kube"},
          Case{"~/.local/share/Morvex/vault/s/a", "/Morvex/vault"},
          Case{"~/.local/share/keyrings/login.keyring", "/.local/share/keyrings"}})
        EXPECT_EQ(checked(path, home), forbidden(fragment)) << path;
}

TEST(OverCestu, ForbiddenFragmentsAreSubstringsThatKeepCase) {
    FileTree tree;
    auto home = tree.allowed({"home"});
    EXPECT_EQ(checked("~/.sshfoo", home), forbidden("/.ssh"));
    EXPECT_EQ(checked("~/.ssh", home), forbidden("/.ssh"));
    EXPECT_EQ(checked("~/a/.ssh/b", home), forbidden("/.ssh"));
    EXPECT_EQ(checked("~/.aws/.ssh", home), forbidden("/.ssh")) << "in the order of the table";
    EXPECT_EQ(checked("~/.SSH/a", home), tree.path("home/.SSH/a"));
    EXPECT_EQ(checked("~/a.ssh", home), tree.path("home/a.ssh"));
    EXPECT_EQ(checked("~/.docker/other", home), tree.path("home/.docker/other"));
}

TEST(OverCestu, CredentialsAreToldBeforeTheFolderIs) {
    FileTree tree;
    EXPECT_EQ(checked("~/.ssh/id_rsa", tree.allowed()), forbidden("/.ssh"));
    EXPECT_EQ(checked("/root/.netrc", tree.allowed({})), forbidden("/.netrc"));
}

TEST(OverCestu, NeitherLinksNorDotsHideCredentials) {
    FileTree tree;
    tree.file("home/.aws/credentials", "");
    tree.link("home/Projects/notes", tree.path("home/.aws/credentials"));
    EXPECT_EQ(checked("notes", tree.allowed()), forbidden("/.aws"));
    EXPECT_EQ(checked("~/.s/../.ssh/a", tree.allowed({"home"})), forbidden("/.ssh"));
    EXPECT_EQ(checked("~//.//ssh/../.ssh//a", tree.allowed({"home"})), forbidden("/.ssh"));
    EXPECT_EQ(checked("~/.ssh/../a", tree.allowed({"home"})), tree.path("home/a"));
}

TEST(OverCestu, ANulByteIsRefusedAndNothingIsCut) {
    FileTree tree;
    tree.link("home/Projects/link", tree.path("outside"));
    auto result = overCestu(std::string("link\0x", 6), {}, tree.allowed());
    ASSERT_FALSE(result);
    const auto* chyba = result.error().as<SouboryChyba>();
    ASSERT_NE(chyba, nullptr);
    EXPECT_EQ(*chyba, (SouboryChyba{SouboryChyba::NeniSoubor{std::string("link\0x", 6)}}));
}

TEST(OverCestu, InvalidUtf8IsAPathAndIsRepairedInItsName) {
    FileTree tree;
    EXPECT_EQ(checked("a\xff", tree.allowed()), tree.path("home/Projects/a\xff"));
    EXPECT_EQ(checked("/a\xff", tree.allowed()), outside("a\ufffd"));
}

TEST(OverCestu, VeryLongPathsAreAnswered) {
    FileTree tree;
    std::string name(100'000, 'x');
    EXPECT_EQ(checked(name, tree.allowed()), tree.path("home/Projects/" + name));
    std::string deep;
    for (int i = 0; i < 100'000; ++i) deep += "../a/";
    EXPECT_EQ(checked(deep, tree.allowed()), outside("a"));
}

TEST(OverCestu, AnAllowedRootAdmitsNothingBelowIt) {
    FileTree tree;
    AllowedFolders root({"/"}, tree.standard);
    EXPECT_EQ(checked("/", root), "/");
    EXPECT_EQ(checked("/etc/hosts", root), outside("hosts"));
}

} // namespace
} // namespace morvex
