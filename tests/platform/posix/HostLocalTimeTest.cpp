#include "platform/posix/HostLocalTime.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <fstream>
#include <string>

namespace morvex {
namespace {

/// A folder of settings, and a process without a zone of its own until a test sets one.
class HostLocalTimeTest : public testing::Test {
  protected:
    HostLocalTimeTest() { ::unsetenv("TZ"); }

    ~HostLocalTimeTest() override { before.empty() ? ::unsetenv("TZ") : ::setenv("TZ", before.c_str(), 1); }

    void link(const std::string& target) {
        std::filesystem::remove(folder.path() / "localtime");
        std::filesystem::create_symlink(target, folder.path() / "localtime");
    }

    void name(const std::string& zone) { std::ofstream(folder.path() / "timezone") << zone; }

    std::string zone() { return HostLocalTime(folder.path()).zone().name(); }

    const std::string before = std::getenv("TZ") ? std::getenv("TZ") : "";
    TemporaryFolder folder;
};

TEST_F(HostLocalTimeTest, IsUtcWhereNoneIsSet) {
    EXPECT_EQ(zone(), "UTC");
    link("/somewhere/else");
    name("Nowhere/Town\n");
    EXPECT_EQ(zone(), "UTC");
    name(std::string(1000, 'x'));
    EXPECT_EQ(zone(), "UTC");
}

TEST_F(HostLocalTimeTest, IsWhatTheComputerOrTheProcessSets) {
    name("America/New_York\n");
    EXPECT_EQ(zone(), "America/New_York");
    link("../usr/share/zoneinfo/Europe/Prague");
    EXPECT_EQ(zone(), "Europe/Prague");
    ::setenv("TZ", "Asia/Tokyo", 1);
    EXPECT_EQ(zone(), "Asia/Tokyo");
    ::setenv("TZ", ":Asia/Kathmandu", 1);
    EXPECT_EQ(zone(), "Asia/Kathmandu");
    ::setenv("TZ", "CET-1CEST,M3.5.0,M10.5.0/3", 1);
    EXPECT_EQ(zone(), "Europe/Prague") << "rules are no name";
}

TEST_F(HostLocalTimeTest, IsReadAnewEachTime) {
    HostLocalTime time(folder.path());
    link("/usr/share/zoneinfo/Europe/Prague");
    EXPECT_EQ(time.zone().name(), "Europe/Prague");
    link("/usr/share/zoneinfo/Asia/Tokyo");
    EXPECT_EQ(time.zone().name(), "Asia/Tokyo");
}

} // namespace
} // namespace morvex
