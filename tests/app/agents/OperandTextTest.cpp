#include "app/agents/Adaptery.h"

#include <gtest/gtest.h>

#include <algorithm>

namespace morvex {
namespace {

using testing::Each;

using Words = std::vector<std::string>;

const Words subcommands{"help",  "review", "resume", "fork",      "exec",        "e",          "mcp",
                        "login", "logout", "update", "upgrade",   "doctor",      "auth",       "agents",
                        "apply", "plugin", "cloud",  "debug",     "setup-token", "auto-mode",  "ultrareview",
                        "queue", "x",      "7",      "features2", "mcp_server",  "completion", "install"};
const Words options{"--help", "-", "-h", "- first\n- second", "--config=a b"};
const Words sentences{"Oprav testy", "help me", "help\n", " help",  "Pokračuj", "oprav!", "Help",
                      "/review",     "–help",   "1 - 2",  " - bod", "žluť",     ""};

/// What each agent gets as the instruction, in a new session and in one that goes on; everything else on its
/// command line stays as it is.
Words handedOver(const std::string& instruction) {
    Words all;
    for (const auto& [id, adapter] : knownAdapters())
        for (const auto& session : {std::optional<std::string>(), std::optional<std::string>("t1")}) {
            auto usual = adapter->argumenty("Oprav to.", "/work", session);
            const auto place = std::ranges::distance(usual.begin(), std::ranges::find(usual, "Oprav to."));
            auto line = adapter->argumenty(instruction, "/work", session);
            if (line.size() != usual.size() || place == std::ssize(usual)) {
                ADD_FAILURE() << id << " has another command line for " << instruction;
                continue;
            }
            all.push_back(*std::next(line.begin(), place));
            *std::next(usual.begin(), place) = all.back();
            EXPECT_EQ(line, usual) << id;
        }
    EXPECT_EQ(all.size(), 4U);
    return all;
}

TEST(OperandText, AWordThatMayBeASubcommandIsAnInstructionForEachAgent) {
    for (const auto& word : subcommands) EXPECT_THAT(handedOver(word), Each(" " + word));
}

TEST(OperandText, AnInstructionThatBeginsLikeAnOptionIsNoneForAnyAgent) {
    for (const auto& text : options) EXPECT_THAT(handedOver(text), Each(" " + text));
}

TEST(OperandText, AnyOtherInstructionGoesOutAsItStands) {
    for (const auto& text : sentences) EXPECT_THAT(handedOver(text), Each(text));
}

} // namespace
} // namespace morvex
