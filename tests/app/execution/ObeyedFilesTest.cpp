#include "app/execution/SouboryBridge.h"
#include "platform/memory/ManualExecutor.h"
#include "tests/app/execution/FileTree.h"

#include <gtest/gtest.h>

#include <array>
#include <fstream>
#include <ranges>
#include <sstream>

namespace morvex {
namespace {

using Chyba = SouboryBridge::Chyba;

/// The table, written down once more, so that a change of it is noticed here.
constexpr auto obeyed = std::to_array<const char*>({
    ".git",
    ".gitconfig",
    ".gitattributes",
    ".gitmodules",
    ".hg",
    ".hgrc",
    ".svn",
    ".jj",
    ".husky",
    ".pre-commit-config.yaml",
    ".claude",
    ".codex",
    ".claude.json",
    ".cursor",
    ".gemini",
    ".windsurf",
    ".opencode",
    ".mcp.json",
    ".vscode",
    ".aider.conf.yml",
    ".idea",
    ".zed",
    ".devcontainer.json",
    ".helix",
    ".devcontainer",
    ".vim",
    ".vimrc",
    ".gvimrc",
    ".exrc",
    ".nvimrc",
    ".nvim.lua",
    ".emacs",
    ".emacs.d",
    ".profile",
    ".oh-my-zsh",
    ".kshrc",
    ".mkshrc",
    ".cshrc",
    ".tcshrc",
    ".login",
    ".logout",
    ".envrc",
    ".direnv",
    ".inputrc",
    ".tmux.conf",
    ".screenrc",
    ".xprofile",
    ".xinitrc",
    ".xsession",
    ".xsessionrc",
    ".config",
    ".local",
    ".pam_environment",
    ".var",
    ".mozilla",
    ".mailcap",
    ".yarn",
    ".yarnrc",
    ".yarnrc.yml",
    ".pnpmfile.cjs",
    ".cargo",
    ".mvn",
    ".gradle",
    ".bazelrc",
    ".venv",
    ".gdbinit",
    ".lldbinit",
    ".gdbearlyinit",
    ".pdbrc",
    ".ipython",
    ".jupyter",
    ".irbrc",
    ".pryrc",
    ".Rprofile",
    ".ghci",
    ".sqliterc",
    ".psqlrc",
    ".bash",
    ".bashrc",
    ".bash_profile",
    ".bash_logout",
    ".zsh",
    ".zshrc",
    ".zshenv",
    ".bash_aliases",
    ".zprofile",
    ".zlogin",
    ".zlogout",
});

/// Rows that the check for credentials refuses first where they are written in this case.
constexpr auto alsoCredentials = std::to_array<const char*>({".ssh", ".aws", ".kube", ".npmrc"});

class ObeyedFilesTest : public testing::Test {
  protected:
    /// What is said to a new file of this text; its name when it was written.
    std::string write(const std::string& path, const std::vector<std::string>& folders = {"home/Projects"}) {
        auto result = executor.run(files.zapis(path, "text", "Projects", tree.allowed(folders))).value();
        return result ? *result : result.error().popis().czech();
    }

    std::string writeBelow(const std::string& folder, const std::string& path) {
        return write(tree.path(folder + "/" + path), {folder});
    }

    static std::string refused(const std::string& name) {
        return Chyba{Chyba::WouldStartProgram{name}}.popis().czech();
    }

    /// A path is refused by this name, and nothing is made on the way there.
    void expectRefused(const std::string& path, const std::string& name) {
        EXPECT_EQ(write(path), refused(name)) << path;
        EXPECT_TRUE(std::filesystem::is_empty(tree.path("home/Projects"))) << path;
    }

    FileTree tree;
    ManualExecutor executor;
    SouboryBridge files{executor};
};

std::string upperAscii(std::string text) {
    for (auto& letter : text)
        if (letter >= 'a' && letter <= 'z') letter = static_cast<char>(letter - ('a' - 'A'));
    return text;
}

TEST_F(ObeyedFilesTest, EachNameOfTheTableIsRefusedAtEachDepthAsFileAndAsFolder) {
    for (const std::string name : obeyed)
        for (const std::string above : {"", "a/", "a/b/c/"})
            for (const std::string below : {"", "/x", "/x/y"}) expectRefused(above + name + below, name);
}

TEST_F(ObeyedFilesTest, TheCaseOfANameDoesNotMatter) {
    for (const std::string name : obeyed) {
        const auto upper = upperAscii(name);
        expectRefused(upper, upper);
        expectRefused("a/" + upper + "/x", upper);
    }
    for (const std::string name : alsoCredentials) {
        const auto upper = upperAscii(name);
        expectRefused("a/" + upper, upper);
        EXPECT_NE(write(name + "/x"), "x");
    }
}

TEST_F(ObeyedFilesTest, NamesThatAFileSystemTakesForOneOfTheTableAreRefused) {
    for (const std::string name :
         {".git.", ".git..", ".git. .", ".g\u200cit", ".gi\u00adt", ".ｇｉｔ", ".\u017fvn"})
        expectRefused(name + "/config", name);
    // Blanks at the end of a path are taken away before.
    expectRefused(".git  ", ".git");
    expectRefused(".git /x", ".git ");
}

TEST_F(ObeyedFilesTest, TheFirstNameOnTheWayIsTold) {
    expectRefused("a/.vscode/.git/x", ".vscode");
    expectRefused(".envrc/.git", ".envrc");
}

TEST_F(ObeyedFilesTest, NamesThatAreLikeThemAreWritten) {
    for (const std::string name :
         {"git",        ".gi",        ".gitignore",   ".github",   ".gitlab-ci.yml", ".gitt",
          "a.git",      ".git-notes", ".git_",        "..git",     ".editorconfig",  ".env",
          ".vscode.md", "vscode",     ".claudes",     "claude",    "CLAUDE.md",      "AGENTS.md",
          "GEMINI.md",  ".codexes",   ".cursorrules", ".confi",    "config",         ".config.json",
          ".locale",    "local",      ".profiles",    "profile",   "bash",           "bashrc",
          ".bas",       "zshrc",      ".zs",          ".mcp",      "mcp.json",       "npmrc",
          ".envrcs",    ".venvs",     "venv",         ".gít",      "HEAD",           "head",
          "objects",    "refs",       "hooks",        "commondir", "Makefile",       "package.json"}) {
        EXPECT_EQ(write(name + "-folder/" + name), name);
        EXPECT_EQ(write("deep/" + name + "/file.txt"), "file.txt") << name;
    }
}

TEST_F(ObeyedFilesTest, ABeginningOfShellsFilesStrikesOtherNamesToo) {
    expectRefused(".bashful", ".bashful");
    expectRefused(".zshy/x", ".zshy");
}

TEST_F(ObeyedFilesTest, ReadingAndSearchingStayAsTheyAre) {
    tree.file("home/Projects/.git/config", "inside");
    tree.file("home/Projects/.envrc", "inside");
    tree.file("home/Projects/bare/HEAD", "inside");
    tree.file("home/Projects/bare/config", "inside");
    for (const std::string path : {".git/config", ".envrc", "bare/HEAD", "bare/config"})
        EXPECT_EQ(executor.run(files.precti(path, {}, tree.allowed())).value(), "inside") << path;
    auto found = executor.run(files.hledej("HEAD", {}, 9, tree.allowed(), {})).value();
    EXPECT_EQ(found, std::vector<std::string>{"bare/HEAD"});
}

TEST_F(ObeyedFilesTest, TheChecksThatStoodBeforeSpeakFirst) {
    tree.file("home/Projects/.git/config", "old");
    tree.link("home/Projects/out", tree.path("outside"));
    EXPECT_EQ(write(".git/config"), Chyba{Chyba::UzExistuje{"config"}}.popis().czech());
    EXPECT_EQ(write("../.git/config"), Chyba{Chyba::MimoPovolene{"config"}}.popis().czech());
    EXPECT_EQ(write("out/.git/config"), Chyba{Chyba::MimoPovolene{"config"}}.popis().czech());
    EXPECT_EQ(write(".config/gh/hosts.yml"), Chyba{Chyba::ZakazanaCesta{"/.config/gh"}}.popis().czech());
    EXPECT_EQ(write(".npmrc"), Chyba{Chyba::ZakazanaCesta{"/.npmrc"}}.popis().czech());
    EXPECT_EQ(write(std::string(".git\0", 5)), "Zápis selhal: Takovou cestu nejde použít.");
    EXPECT_EQ(write(".git/" + std::string(300, 'x')), "Zápis selhal: Jméno nebo cesta je příliš dlouhá.");
    EXPECT_EQ(tree.content("home/Projects/.git/config"), "old");
}

TEST_F(ObeyedFilesTest, OnlyWhatLiesBelowTheAllowedFolderCounts) {
    for (const std::string folder : {"home/.config/app", "home/.git", "home/.vscode/a/b"}) {
        tree.folder(folder);
        EXPECT_EQ(writeBelow(folder, "x/a.txt"), "a.txt");
        EXPECT_EQ(writeBelow(folder, "x/.config/a.txt"), refused(".config"));
    }
}

TEST_F(ObeyedFilesTest, OfAllowedFoldersInEachOtherTheInnermostCounts) {
    tree.folder("home/.config/app");
    EXPECT_EQ(write("~/.config/app/one", {"home", "home/.config/app"}), "one");
    EXPECT_EQ(write("~/.config/app/two", {"home/.config/app", "home"}), "two");
    EXPECT_EQ(write("~/.config/other", {"home/.config/app", "home"}), refused(".config"));
}

TEST_F(ObeyedFilesTest, TheWayIsJudgedAsItsLinksResolve) {
    tree.folder("home/Projects/.git/hooks");
    tree.folder("home/Projects/plain");
    tree.folder("home/way");
    tree.link("home/Projects/nice", ".git/hooks");
    tree.link("home/Projects/later", ".git/later");
    tree.link("home/Projects/file.txt", ".envrc");
    tree.link("home/Projects/.vscode", "plain");
    EXPECT_EQ(write("nice/post-checkout"), refused(".git"));
    EXPECT_EQ(write("later/x"), refused(".git"));
    EXPECT_EQ(write("file.txt"), refused(".envrc"));
    EXPECT_EQ(write("plain/../.git/x"), refused(".git"));
    EXPECT_EQ(write(".git/../a"), "a");
    EXPECT_EQ(write(".vscode/settings.json"), "settings.json") << "it lies in another folder";
    EXPECT_TRUE(tree.exists("home/Projects/plain/settings.json"));
    EXPECT_TRUE(std::filesystem::is_empty(tree.path("home/Projects/.git/hooks")));
}

TEST_F(ObeyedFilesTest, ANameThatNoDiskHoldsIsNotCompared) {
    std::string name = "none/.git";
    for (int i = 0; i < 1'000'000; ++i) name += "\u0301";
    EXPECT_EQ(write(name), "Zápis selhal: Jméno nebo cesta je příliš dlouhá.");
}

TEST_F(ObeyedFilesTest, TheDocumentNamesThemAll) {
    std::ostringstream text;
    text << std::ifstream(MORVEX_SOURCE_DIR "/docs/security.md").rdbuf();
    for (const std::string name : obeyed)
        if (name == ".bash" || name == ".zsh" || (!name.starts_with(".bash") && !name.starts_with(".zsh")))
            EXPECT_TRUE(text.str().contains("`" + name + "`")) << name;
    for (const std::string name : alsoCredentials) EXPECT_TRUE(text.str().contains("`" + name + "`")) << name;
}

} // namespace
} // namespace morvex
