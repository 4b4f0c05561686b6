#include "platform/linux/XdgAutostart.h"

#include "platform/linux/GLibHandle.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <fstream>
#include <string>

namespace morvex {
namespace {

class XdgAutostartTest : public testing::Test {
  protected:
    XdgAutostart itemFor(const std::string& program) { return {folder_.path(), program}; }

    void write(const std::string& text) const {
        std::filesystem::create_directories(entry_.parent_path());
        std::ofstream(entry_) << text;
    }

    TemporaryFolder folder_;
    std::filesystem::path entry_ = folder_.path() / "autostart" / "morvex.desktop";
    XdgAutostart item_ = itemFor("/usr/bin/morvex");
};

TEST_F(XdgAutostartTest, IsOffUntilItIsEnrolledAndAfterItWasWithdrawn) {
    EXPECT_FALSE(item_.isEnabled());
    ASSERT_TRUE(item_.enroll());
    EXPECT_TRUE(item_.isEnabled());
    ASSERT_TRUE(item_.enroll());
    EXPECT_TRUE(item_.isEnabled());
    ASSERT_TRUE(item_.withdraw());
    EXPECT_FALSE(item_.isEnabled());
    EXPECT_FALSE(std::filesystem::exists(entry_));
    EXPECT_TRUE(item_.withdraw()) << "nothing to withdraw is no failure";
}

TEST_F(XdgAutostartTest, WritesAnEntryThatTheDesktopReadsBack) {
    ASSERT_TRUE(item_.enroll());
    std::ifstream file(entry_);
    std::string text(std::istreambuf_iterator<char>(file), {});
    EXPECT_EQ(text, "[Desktop Entry]\nType=Application\nName=Morvex\nExec=\"/usr/bin/morvex\"\n");
}

/// What the desktop would start for the entry: the expanded and split Exec line.
std::string programOf(const std::filesystem::path& entry) {
    GLibHandle<GKeyFile, g_key_file_unref> file(g_key_file_new());
    EXPECT_TRUE(g_key_file_load_from_file(file.get(), entry.c_str(), G_KEY_FILE_NONE, nullptr));
    GLibHandle<char, g_free> line(g_key_file_get_string(file.get(), "Desktop Entry", "Exec", nullptr));
    int count = 0;
    char** split = nullptr;
    EXPECT_TRUE(g_shell_parse_argv(line.get(), &count, &split, nullptr)) << line.get();
    GLibHandle<char*, g_strfreev> words(split);
    EXPECT_EQ(count, 1) << line.get();
    std::string program = words.get()[0];
    for (auto at = program.find("%%"); at != std::string::npos; at = program.find("%%", at + 1))
        program.erase(at, 1);
    return program;
}

TEST_F(XdgAutostartTest, QuotesThePathOfTheProgram) {
    for (const char* program : {"/opt/my programs/morvex", "/opt/a\"b/morvex", "/opt/a$HOME`x`/morvex",
                                "/opt/a\\b\\\\c/morvex", "/opt/100%/%u/morvex", "/opt/Jana's/morvex",
                                "/opt/příliš žluťoučký/morvex", "/opt/a\nb\tc/morvex", "/opt/ x"}) {
        auto item = itemFor(program);
        ASSERT_TRUE(item.enroll());
        EXPECT_EQ(programOf(entry_), program);
        EXPECT_TRUE(item.isEnabled());
    }
}

TEST_F(XdgAutostartTest, ShowsWhatTheDesktopWouldDo) {
    const struct {
        const char* text;
        bool enabled;
    } cases[] = {
        {"[Desktop Entry]\nType=Application\nExec=morvex\n", true},
        {"[Desktop Entry]\nExec=morvex\nHidden=false\n", true},
        {"[Desktop Entry]\nExec=morvex\nHidden=true\n", false},
        {"[Desktop Entry]\nExec=morvex\nX-GNOME-Autostart-enabled=true\n", true},
        {"[Desktop Entry]\nExec=morvex\nX-GNOME-Autostart-enabled=false\n", false},
        {"[Desktop Entry]\nExec=morvex\nX-GNOME-Autostart-enabled=true\nHidden=true\n", false},
        {"[Desktop Entry]\nName=Morvex\n", false},
        {"[Another Group]\nExec=morvex\n", false},
        {"this is no entry", false},
        {"", false},
    };

    for (const auto& row : cases) {
        write(row.text);
        EXPECT_EQ(item_.isEnabled(), row.enabled) << row.text;
    }
}

TEST_F(XdgAutostartTest, EnrollingSwitchesOnWhatTheDesktopHadSwitchedOff) {
    write("[Desktop Entry]\nExec=morvex\nHidden=true\nX-GNOME-Autostart-enabled=false\n");
    ASSERT_TRUE(item_.enroll());
    EXPECT_TRUE(item_.isEnabled());
}

TEST_F(XdgAutostartTest, AnEntryThatCannotBeReadIsOff) {
    std::filesystem::create_directories(entry_);
    EXPECT_FALSE(item_.isEnabled());
    std::filesystem::remove(entry_);
    write("[Desktop Entry]\nExec=morvex\n#" + std::string(100'000, 'x') + "\n");
    EXPECT_FALSE(item_.isEnabled()) << "longer than any entry";
}

TEST_F(XdgAutostartTest, AFolderThatCannotBeWrittenIsAFailureWithWords) {
    std::ofstream(folder_.path() / "autostart") << "a file in the way";
    auto enrolled = item_.enroll();
    ASSERT_FALSE(enrolled);
    EXPECT_FALSE(enrolled.error().popis().czech().empty());
    EXPECT_FALSE(item_.isEnabled());

    std::filesystem::remove(folder_.path() / "autostart");
    std::filesystem::create_directories(entry_ / "full");
    EXPECT_FALSE(item_.withdraw());
}

} // namespace
} // namespace morvex
