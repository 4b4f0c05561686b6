#include "relay/RelayOptions.h"

#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <cstdlib>
#include <sys/stat.h>
#include <vector>

using namespace morvex;

namespace {

Result<RelayOptions> parse(std::vector<const char*> arguments) {
    return RelayOptions::parse(arguments);
}

std::string refusalOf(std::vector<const char*> arguments) {
    const auto options = parse(std::move(arguments));
    return options ? "accepted" : options.error().popis().czech();
}

} // namespace

TEST(RelayOptions, ServeThisComputerAloneUnlessToldOtherwise) {
    const auto options = parse({});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->host, "127.0.0.1");
    EXPECT_EQ(options->port, "8787");
    EXPECT_FALSE(options->database);
    EXPECT_FALSE(options->tls);
    EXPECT_EQ(options->connections, 1024U);
}

TEST(RelayOptions, TakeEveryOption) {
    const auto options = parse(
        {"--listen", "0.0.0.0:443", "--db", "/d", "--cert", "/c", "--key", "/k", "--connections", "1000000"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->host, "0.0.0.0");
    EXPECT_EQ(options->port, "443");
    EXPECT_EQ(options->database, "/d");
    EXPECT_EQ(options->tls, (RelayOptions::Tls{"/c", "/k"}));
    EXPECT_EQ(options->connections, 1'000'000U);
}

TEST(RelayOptions, TakeIPv6HostsInBrackets) {
    const auto options = parse({"--listen", "[::1]:0"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->host, "::1");
    EXPECT_EQ(options->port, "0");
}

TEST(RelayOptions, AnswerHelpAndVersionBeforeAnythingElse) {
    EXPECT_EQ(parse({"--help", "--nonsense"})->task, RelayOptions::Task::showHelp);
    EXPECT_EQ(parse({"--version"})->task, RelayOptions::Task::showVersion);
}

TEST(RelayOptions, SayWhatIsWrong) {
    EXPECT_EQ(refusalOf({"--verbose"}), "unknown option '--verbose'");
    EXPECT_EQ(refusalOf({"stray"}), "unknown option 'stray'");
    EXPECT_EQ(refusalOf({"--db"}), "--db needs a value");
    EXPECT_EQ(refusalOf({"--db", ""}), "--db needs a value");
    EXPECT_EQ(refusalOf({"--cert", "/c"}), "--cert and --key go together");
    EXPECT_EQ(refusalOf({"--key", "/k"}), "--cert and --key go together");
    for (const char* count : {"0", "-1", "1000001", "99999999999999999999", "many", "10x", " 1"})
        EXPECT_EQ(refusalOf({"--connections", count}),
                  std::string{"--connections needs a number from 1 to 1000000, not '"} + count + "'");
    for (const char* address :
         {"8787", "host", ":8787", "host:", "host:65536", "host:-1", "host:8x", "::1:8787", "[]:1"})
        EXPECT_EQ(refusalOf({"--listen", address}),
                  std::string{"--listen needs HOST:PORT, not '"} + address + "'");
}

TEST(RelayOptions, MakeThePrivateFolderOfTheDefaultDatabase) {
    TemporaryFolder folder;
    setenv("XDG_DATA_HOME", (folder.path() / "data").c_str(), 1);
    const auto file = defaultDatabase();
    unsetenv("XDG_DATA_HOME");
    ASSERT_TRUE(file);
    EXPECT_EQ(*file, folder.path() / "data/morvex-relay/relay.db");
    struct stat status{};
    ASSERT_EQ(stat(file->parent_path().c_str(), &status), 0);
    EXPECT_EQ(status.st_mode & 0777U, 0700U);
}
