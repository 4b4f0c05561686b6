#include "platform/linux/DesktopUrlOpener.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <string>
#include <sys/stat.h>

namespace morvex {
namespace {

/// A desktop of the test's own, in a process of its own: GLib reads the folders once. Its one application
/// handles the scheme "codex" and tells what it was given.
class Desktop {
  public:
    Desktop() {
        auto applications = folder_.path() / "data" / "applications";
        std::filesystem::create_directories(applications);
        std::filesystem::create_directories(folder_.path() / "config");
        require(::mkfifo(told().c_str(), 0600) == 0, "no pipe");
        auto program = folder_.path() / "program";
        std::ofstream(program) << "#!/bin/sh\necho \"$1\" > " << told().string() << "\n";
        std::filesystem::permissions(program, std::filesystem::perms::owner_all);
        write(applications / "test.desktop", program.string() + " %u", "codex");
        write(applications / "broken.desktop", folder_.path() / "missing %u", "claude");
        ::setenv("XDG_DATA_HOME", (folder_.path() / "data").c_str(), 1);
        ::setenv("XDG_DATA_DIRS", (folder_.path() / "data").c_str(), 1);
        ::setenv("XDG_CONFIG_HOME", (folder_.path() / "config").c_str(), 1);
        ::setenv("XDG_CONFIG_DIRS", (folder_.path() / "config").c_str(), 1);
        ::unsetenv("DBUS_SESSION_BUS_ADDRESS");
        std::ofstream(folder_.path() / "config" / "mimeapps.list")
            << "[Default Applications]\nx-scheme-handler/codex=test.desktop\n"
               "x-scheme-handler/claude=broken.desktop\n";
    }

    /// Waits until the application has told.
    [[nodiscard]] std::string opened() const {
        std::string line;
        std::getline(std::ifstream(told()) >> std::ws, line);
        return line;
    }

  private:
    static void write(const std::filesystem::path& file, const std::string& command,
                      const std::string& scheme) {
        std::ofstream(file) << "[Desktop Entry]\nType=Application\nName=Test\nExec=" << command
                            << "\nMimeType=x-scheme-handler/" << scheme << ";\n";
    }

    [[nodiscard]] std::filesystem::path told() const { return folder_.path() / "told"; }

    TemporaryFolder folder_;
};

[[noreturn]] void endWith(bool isRight) {
    std::exit(isRight ? 0 : 1);
}

bool givesTheWholeAddress() {
    Desktop desktop;
    const std::string url = "codex://threads/a%2Fb?c=d&e=%20'$(id)'";
    return DesktopUrlOpener().open(url) && desktop.opened() == url;
}

bool opens(const std::string& url) {
    Desktop desktop;
    return DesktopUrlOpener().open(url);
}

class DesktopUrlOpenerTest : public testing::Test {
  protected:
    DesktopUrlOpenerTest() { GTEST_FLAG_SET(death_test_style, "threadsafe"); }
};

TEST_F(DesktopUrlOpenerTest, GivesTheWholeAddressToTheApplicationOfItsScheme) {
    EXPECT_EXIT(endWith(givesTheWholeAddress()), testing::ExitedWithCode(0), "");
}

TEST_F(DesktopUrlOpenerTest, SaysWhenNobodyHandlesTheScheme) {
    EXPECT_EXIT(endWith(!opens("nobody://threads/1")), testing::ExitedWithCode(0), "");
    EXPECT_EXIT(endWith(!opens("")), testing::ExitedWithCode(0), "");
}

TEST_F(DesktopUrlOpenerTest, SaysWhenTheApplicationIsGone) {
    EXPECT_EXIT(endWith(!opens("claude://resume")), testing::ExitedWithCode(0), "");
}

} // namespace
} // namespace morvex
