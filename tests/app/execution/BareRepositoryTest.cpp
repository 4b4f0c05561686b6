#include "app/execution/SouboryBridge.h"
#include "platform/memory/ManualExecutor.h"
#include "tests/app/execution/FileTree.h"

#include <gtest/gtest.h>

#include <filesystem>

namespace morvex {
namespace {

using Chyba = SouboryBridge::Chyba;

/// A bare repository has none of the names of the table: git knows it by what stands in one folder.
class BareRepositoryTest : public testing::Test {
  protected:
    std::string write(const std::string& path) {
        auto result = executor.run(files.zapis(path, "text", "Projects", tree.allowed())).value();
        return result ? *result : result.error().popis().czech();
    }

    void lay(const std::vector<std::string>& names) {
        std::filesystem::remove_all(tree.path("home/Projects"));
        tree.folder("home/Projects");
        for (const auto& name : names) {
            if (name.ends_with('/'))
                tree.folder("home/Projects/" + name);
            else
                tree.file("home/Projects/" + name, "there");
        }
    }

    void expectRefused(const std::string& path, const std::string& name) {
        EXPECT_EQ(write(path), (Chyba{Chyba::WouldStartProgram{name}}.popis().czech())) << path;
        EXPECT_FALSE(tree.exists("home/Projects/" + path)) << path;
    }

    FileTree tree;
    ManualExecutor executor;
    SouboryBridge files{executor};
};

TEST_F(BareRepositoryTest, AHeadIsNotPutBesideWhatMakesARepository) {
    for (const std::string other : {"config", "objects/", "refs/", "commondir"})
        for (const std::string folder : {"", "a/", "a/b.git/"})
            for (const std::string head : {"HEAD", "head", "Head", "HEAD."}) {
                lay({folder + other});
                expectRefused(folder + head, head);
            }
}

TEST_F(BareRepositoryTest, WhatMakesARepositoryIsNotPutBesideAHead) {
    for (const std::string folder : {"", "a/", "a/b.git/"}) {
        lay({folder + "HEAD"});
        for (const std::string name :
             {"config", "CONFIG", "commondir", "objects", "refs", "hooks", "Hooks", "config."})
            expectRefused(folder + name, name);
        for (const std::string name : {"objects", "OBJECTS", "refs", "hooks", "HOOKS"}) {
            expectRefused(folder + name + "/x", name);
            expectRefused(folder + name + "/x/y", name);
            EXPECT_FALSE(tree.exists("home/Projects/" + folder + name)) << "no folder is made on the way";
        }
    }
}

TEST_F(BareRepositoryTest, WhatStandsThereCountsInAnyCase) {
    lay({"one/head", "two/Config", "three/OBJECTS/"});
    expectRefused("one/config", "config");
    expectRefused("one/refs/x", "refs");
    expectRefused("two/HEAD", "HEAD");
    expectRefused("three/HEAD", "HEAD");
}

TEST_F(BareRepositoryTest, NothingIsWrittenInOrBelowARepositoryThatStandsThere) {
    lay({"a/b.git/HEAD", "a/b.git/config", "a/b.git/objects/", "a/b.git/refs/", "a/b.git/hooks/"});
    for (const auto& [path, name] : std::initializer_list<std::pair<std::string, std::string>>{
             {"hooks/post-receive", "hooks"},
             {"info/attributes", "info"},
             {"objects/info/alternates", "objects"},
             {"refs/heads/main", "refs"},
             {"modules/x/config", "modules"},
             {"config.worktree", "config.worktree"},
             {"notes.txt", "notes.txt"},
         })
        expectRefused("a/b.git/" + path, name);
    EXPECT_EQ(write("a/c.txt"), "c.txt") << "it lies beside";
}

TEST_F(BareRepositoryTest, TheAllowedFolderItselfMayBeTheRepository) {
    lay({"HEAD", "config"});
    expectRefused("notes.txt", "notes.txt");
    expectRefused("a/b/c.txt", "a");
}

TEST_F(BareRepositoryTest, NoneOfThemAloneIsRefused) {
    for (const std::string path :
         {"HEAD", "config", "commondir", "objects/x", "refs/x", "hooks/x", "hooks/HEAD"}) {
        lay({});
        EXPECT_EQ(write(path), std::filesystem::path(path).filename()) << path;
    }
    lay({"HEAD"});
    for (const std::string path :
         {"README.md", "configs", "object/x", "ref", "a/config", "a/objects/x", "src/hooks/x"})
        EXPECT_EQ(write(path), std::filesystem::path(path).filename()) << path;
    lay({"config", "objects/", "refs/", "hooks/"});
    for (const std::string path :
         {"README.md", "HEADS", "a/HEAD", "src/x", "objects/HEAD", "hooks/x", "refs/x"})
        EXPECT_EQ(write(path), std::filesystem::path(path).filename()) << path;
}

TEST_F(BareRepositoryTest, AFolderIsNoHead) {
    lay({"head/", "config", "hooks/"});
    EXPECT_EQ(write("head/title.js"), "title.js");
    EXPECT_EQ(write("a.txt"), "a.txt");
    EXPECT_EQ(write("hooks/use.js"), "use.js");
    lay({"config"});
    EXPECT_EQ(write("HEAD/a.txt"), "a.txt");
}

TEST_F(BareRepositoryTest, ARepositoryIsNotPutTogetherInAnyOrder) {
    std::vector<std::string> paths{"r/HEAD", "r/commondir", "r/config", "r/objects/x", "r/refs/x"};
    std::ranges::sort(paths);
    do {
        lay({});
        for (const auto& path : paths) (void)write(path);
        const bool isHead = tree.exists("home/Projects/r/HEAD");
        for (const auto* other : {"commondir", "config", "objects", "refs"})
            EXPECT_FALSE(isHead && tree.exists("home/Projects/r/" + std::string(other))) << other;
    } while (std::ranges::next_permutation(paths).found);
}

TEST_F(BareRepositoryTest, LinksAreJudgedByWhereTheyLead) {
    lay({"b.git/HEAD", "b.git/config", "b.git/hooks/", "plain/", "linked/config"});
    tree.link("home/Projects/nice", "b.git");
    tree.link("home/Projects/new.txt", "b.git/description");
    tree.link("home/Projects/linked/HEAD", "/nowhere");
    EXPECT_EQ(write("nice/x"), (Chyba{Chyba::WouldStartProgram{"x"}}.popis().czech()));
    EXPECT_EQ(write("new.txt"), (Chyba{Chyba::WouldStartProgram{"description"}}.popis().czech()));
    EXPECT_EQ(write("nice/../plain/x"), "x");
    expectRefused("linked/x", "x");
}

} // namespace
} // namespace morvex
