#include "phone/Options.h"

#include "phone/PhoneError.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <cstdlib>

namespace morvex {
namespace {

using Command = Options::Command;
using testing::HasSubstr;

Result<Options> parse(std::vector<const char*> arguments) {
    return Options::parse(arguments);
}

TEST(PhoneOptions, EveryCommandIsRead) {
    const std::vector<std::pair<const char*, Command>> rows{
        {"pair", Command::pair},         {"status", Command::status}, {"tools", Command::tools},
        {"watch", Command::watch},       {"shell", Command::shell},   {"unpair", Command::unpair},
        {"approve", Command::approve},   {"help", Command::help},     {"--help", Command::help},
        {"--version", Command::version}, {"key", Command::key},       {"preferences", Command::preferences}};
    for (const auto& [word, command] : rows) EXPECT_EQ(parse({word})->command, command) << word;
    EXPECT_EQ(parse({"call", "mac.status"})->command, Command::call);
    EXPECT_EQ(parse({})->command, std::nullopt);
}

TEST(PhoneOptions, OptionsMayStandBeforeAndAfterTheCommand) {
    auto options = parse({"--json", "call", "--timeout", "7", "mac.status", "--data", "/tmp/x", "{}",
                          "--approve", "no", "--yes"});
    ASSERT_TRUE(options);
    EXPECT_EQ(options->arguments, (std::vector<std::string>{"mac.status", "{}"}));
    EXPECT_EQ(options->timeout, std::chrono::seconds(7));
    EXPECT_EQ(options->data, "/tmp/x");
    EXPECT_EQ(options->approve, ApprovalPolicy::no);
    EXPECT_TRUE(options->isJson);
    EXPECT_TRUE(options->isConfirmed);
}

TEST(PhoneOptions, DefaultsWaitThirtySecondsAndDecideNothing) {
    auto options = parse({"status"});
    EXPECT_EQ(options->timeout, std::chrono::seconds(30));
    EXPECT_EQ(options->approve, std::nullopt);
    EXPECT_FALSE(options->isConfirmed);
}

TEST(PhoneOptions, AfterTwoDashesEverythingIsAWord) {
    EXPECT_EQ(parse({"call", "--", "--json"})->arguments, std::vector<std::string>{"--json"});
}

TEST(PhoneOptions, HelpWinsOverWhatStandsBehindIt) {
    EXPECT_EQ(parse({"call", "--help", "--nonsense"})->command, Command::help);
}

TEST(PhoneOptions, WrongUsageIsToldInWords) {
    const std::vector<std::pair<std::vector<const char*>, const char*>> rows{
        {{"dance"}, "Příkaz 'dance' neznám"},
        {{"--dance"}, "Volbu '--dance' neznám"},
        {{"--timeout"}, "--timeout chce hodnotu SECONDS"},
        {{"--data", ""}, "--data chce hodnotu DIR"},
        {{"--timeout", "0", "status"}, "od 1 do 3600"},
        {{"--timeout", "3601", "status"}, "od 1 do 3600"},
        {{"--timeout", "5s", "status"}, "od 1 do 3600"},
        {{"--approve", "maybe", "status"}, "yes, no nebo ask"},
        {{"call"}, "Použití: morvex-phone call NAME [JSON | -]"},
        {{"call", "a", "{}", "b"}, "Použití: morvex-phone call"},
        {{"status", "now"}, "Použití: morvex-phone status"},
        {{"key", "sk-1"}, "Použití: morvex-phone key"},
        {{"preferences", "voice"}, "Použití: morvex-phone preferences [language CODE"},
        {{"apps"}, "Použití: morvex-phone apps list | add NAME ADDRESS | remove NAME"},
        {{"approve", "ID"}, "Použití: morvex-phone approve [ID yes|no]"},
    };
    for (const auto& [arguments, words] : rows) {
        auto options = parse(arguments);
        ASSERT_FALSE(options) << words;
        EXPECT_THAT(options.error().popis().czech(), HasSubstr(words));
        EXPECT_EQ(exitCodeOf(options.error()), ExitCode::usage);
    }
}

TEST(PhoneOptions, HelpNamesEveryCommandOptionAndExitCode) {
    auto help = Options::help();
    for (const char* word :
         {"pair", "status", "tools", "call", "watch", "approve", "shell", "unpair", "--data", "--json",
          "--timeout", "--yes", "--approve", "--version", "  6  ", "130"})
        EXPECT_THAT(help, HasSubstr(word));
}

TEST(PhoneOptions, TheDataFolderIsTheGivenOneOrBelowTheDataHome) {
    EXPECT_EQ(dataFolder(*parse({"--data", "/srv/phone", "status"})).value(), "/srv/phone");
    ::setenv("XDG_DATA_HOME", "/data", 1);
    EXPECT_EQ(dataFolder({}).value(), "/data/morvex-phone");
    ::setenv("XDG_DATA_HOME", "relative", 1);
    ::setenv("HOME", "/home/eva", 1);
    EXPECT_EQ(dataFolder({}).value(), "/home/eva/.local/share/morvex-phone");
}

} // namespace
} // namespace morvex
