#include "tests/support/ChildProgram.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <map>
#include <string>
#include <vector>

namespace morvex {
namespace {

/// The programs and their desktop files, installed into a prefix of the test.
class InstallTest : public testing::Test {
  protected:
    InstallTest() {
        auto told = run({"cmake", "--install", MORVEX_BUILD_DIR, "--prefix", prefix().string()});
        EXPECT_EQ(told.back(), "ended with 0") << testing::PrintToString(told);
    }

    /// The output line by line, with the exit code as the last line.
    static std::vector<std::string> run(const std::vector<std::string>& command) {
        std::vector<std::string> words{"sh", "-c", R"("$@" 2>&1; echo "ended with $?")", "sh"};
        words.insert(words.end(), command.begin(), command.end());
        ChildProgram program(words, {});
        std::vector<std::string> lines;
        while (lines.empty() || !lines.back().starts_with("ended with ")) lines.push_back(program.readLine());
        return lines;
    }

    static std::map<std::string, std::string> keysOf(const std::filesystem::path& entry) {
        std::map<std::string, std::string> keys;
        std::ifstream file(entry);
        for (std::string line; std::getline(file, line);)
            if (auto at = line.find('='); at != std::string::npos)
                keys[line.substr(0, at)] = line.substr(at + 1);
        return keys;
    }

    std::filesystem::path prefix() const { return temporary.path() / "usr"; }

    std::filesystem::path share() const { return prefix() / "share"; }

    TemporaryFolder temporary;
};

const std::vector<std::string> fine{"ended with 0"};

TEST_F(InstallTest, TheProgramsRunFromWhereTheyAreInstalled) {
    for (const char* name : {"morvex", "morvex-relay", "morvex-phone"}) {
        auto told = run({(prefix() / "bin" / name).string(), "--version"});
        EXPECT_EQ(told.back(), "ended with 0") << testing::PrintToString(told);
    }
}

TEST_F(InstallTest, TheMenusOfTheDesktopFindTheProgramAndItsPicture) {
    auto entry = share() / "applications/morvex.desktop";
    EXPECT_EQ(run({"desktop-file-validate", entry.string()}), fine);
    auto keys = keysOf(entry);
    EXPECT_TRUE(std::filesystem::exists(prefix() / "bin" / keys["Exec"])) << keys["Exec"];
    auto picture = share() / "icons/hicolor/scalable/apps" / (keys["Icon"] + ".svg");
    EXPECT_TRUE(std::filesystem::exists(picture)) << picture;
}

TEST_F(InstallTest, SoftwareCentresCanDescribeTheProgram) {
    auto description = share() / "metainfo/zz.bramwick.morvex.metainfo.xml";
    auto told = run({"appstreamcli", "validate", "--no-net", description.string()});
    EXPECT_EQ(told.back(), "ended with 0") << testing::PrintToString(told);
    std::ifstream file(description);
    const std::string text{std::istreambuf_iterator<char>(file), {}};
    EXPECT_NE(text.find("<launchable type=\"desktop-id\">morvex.desktop<"), std::string::npos);
}

} // namespace
} // namespace morvex
