#include "platform/linux/XdgFolders.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <map>
#include <optional>
#include <pwd.h>
#include <unistd.h>

namespace morvex {
namespace {

class XdgFoldersTest : public testing::Test {
  protected:
    XdgFoldersTest() {
        std::filesystem::create_directories(home + "/.config");
        set("HOME", home);
        unset("XDG_CONFIG_HOME");
        unset("XDG_DATA_HOME");
    }

    ~XdgFoldersTest() override {
        for (const auto& [name, value] : before_)
            if (value)
                ::setenv(name.c_str(), value->c_str(), 1);
            else
                ::unsetenv(name.c_str());
    }

    void set(const std::string& name, const std::string& value) {
        remember(name);
        ::setenv(name.c_str(), value.c_str(), 1);
    }

    void unset(const std::string& name) {
        remember(name);
        ::unsetenv(name.c_str());
    }

    void userDirs(const std::string& text) const { std::ofstream(home + "/.config/user-dirs.dirs") << text; }

    TemporaryFolder temporary;
    std::string home = (temporary.path() / "home").string();
    XdgFolders folders;

  private:
    void remember(const std::string& name) {
        const char* value = std::getenv(name.c_str());
        before_.try_emplace(name, value ? std::optional<std::string>(value) : std::nullopt);
    }

    std::map<std::string, std::optional<std::string>> before_;
};

TEST_F(XdgFoldersTest, TheHomeOfTheAccountIsThePasswordDatabasesWhateverTheVariableSays) {
    EXPECT_EQ(folders.accountHome(), ::getpwuid(::getuid())->pw_dir);
    EXPECT_NE(folders.accountHome(), folders.home());
}

TEST_F(XdgFoldersTest, HomeIsTheVariableWhenItIsAbsolute) {
    EXPECT_EQ(folders.home(), home);
    for (const auto* value : {"", "relative"}) {
        set("HOME", value);
        EXPECT_EQ(folders.home(), ::getpwuid(::getuid())->pw_dir);
    }
    unset("HOME");
    EXPECT_EQ(folders.home(), ::getpwuid(::getuid())->pw_dir);
}

TEST_F(XdgFoldersTest, HomesOfUsersAreInThePasswordDatabase) {
    EXPECT_EQ(folders.homeOf("root"), ::getpwnam("root")->pw_dir);
    EXPECT_EQ(folders.homeOf("no-such-user-here"), std::nullopt);
    EXPECT_EQ(folders.homeOf(std::string("root\0x", 6)), std::nullopt);
    EXPECT_EQ(folders.homeOf(std::string(100'000, 'x')), std::nullopt);
}

TEST_F(XdgFoldersTest, TheDesktopIsTheDefaultUntilItIsConfigured) {
    EXPECT_EQ(folders.desktop(), home + "/Desktop");
    userDirs(
        "# XDG_DESKTOP_DIR=\"$HOME/No\"\nXDG_MUSIC_DIR=\"$HOME/Hudba\"\nXDG_DESKTOP_DIRECTORY=\"/no\"\n");
    EXPECT_EQ(folders.desktop(), home + "/Desktop");
    userDirs("  XDG_DESKTOP_DIR = \"$HOME/Pracovn\xc3\xad plocha\"  \nXDG_MUSIC_DIR=\"$HOME/Hudba\"");
    EXPECT_EQ(folders.desktop(), home + "/Pracovní plocha");
}

TEST_F(XdgFoldersTest, TheDesktopIsReadInEachFormThatIsAllowed) {
    struct Case {
        const char* line;
        std::string desktop;
    };

    for (const auto& [line, desktop] :
         {Case{R"(XDG_DESKTOP_DIR="/mnt/d")", "/mnt/d"},
          Case{R"(XDG_DESKTOP_DIR="/mnt/a\"b\\c\$")", "/mnt/a\"b\\c$"},
          Case{R"(XDG_DESKTOP_DIR="relative")", home + "/Desktop"},
          Case{R"(XDG_DESKTOP_DIR=/unquoted)", home + "/Desktop"},
          Case{R"(XDG_DESKTOP_DIR="$HOMEX/d")", home + "/Desktop"},
          Case{R"(XDG_DESKTOP_DIR=")", home + "/Desktop"},
          Case{"XDG_DESKTOP_DIR=\"/first\"\nXDG_DESKTOP_DIR=\"/second\"", "/second"}}) {
        userDirs(line);
        EXPECT_EQ(folders.desktop(), desktop) << line;
    }
}

TEST_F(XdgFoldersTest, TheHomeFolderIsNeverTheDesktop) {
    for (const auto* line :
         {R"(XDG_DESKTOP_DIR="$HOME")", R"(XDG_DESKTOP_DIR="$HOME/")", R"(XDG_DESKTOP_DIR="$HOME/./a/..")"}) {
        userDirs(line);
        EXPECT_EQ(folders.desktop(), std::nullopt) << line;
    }
    std::filesystem::create_directory_symlink(home, home + "/Desktop");
    userDirs("");
    EXPECT_EQ(folders.desktop(), std::nullopt);
}

TEST_F(XdgFoldersTest, TheConfigurationHomeMayBeElsewhere) {
    auto config = (temporary.path() / "config").string();
    std::filesystem::create_directory(config);
    std::ofstream(config + "/user-dirs.dirs") << "XDG_DESKTOP_DIR=\"$HOME/Elsewhere\"\n";
    set("XDG_CONFIG_HOME", config);
    EXPECT_EQ(folders.configuration(), config);
    EXPECT_EQ(folders.desktop(), home + "/Elsewhere");
    set("XDG_CONFIG_HOME", "relative");
    EXPECT_EQ(folders.configuration(), home + "/.config");
}

TEST_F(XdgFoldersTest, RecordsLieInTheDataHome) {
    EXPECT_EQ(folders.applicationSupport(), home + "/.local/share");
    set("XDG_DATA_HOME", "/data");
    EXPECT_EQ(folders.applicationSupport(), "/data");
}

} // namespace
} // namespace morvex
