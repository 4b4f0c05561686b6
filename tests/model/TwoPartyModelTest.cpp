#include "tests/model/TwoParties.h"
#include "tests/support/Effort.h"
#include "tests/support/EnvironmentValue.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <csignal>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <unistd.h>

namespace morvex {
namespace {

constexpr std::uint64_t firstSeed = 20'261'121;
constexpr int fewestEvents = 10;
constexpr int mostEvents = 60;
/// The limit for either end, counted after all faults have ended and earlier messages were delivered: the
/// status and each of the few records of the other side, and the same again if both have begun the session at
/// once.
constexpr std::size_t mostMessagesToRest = 10;

/// The seed of the running history, in case the program crashes.
std::uint64_t presentSeed = 0;

void tellSeed(int signal) {
    std::fprintf(stderr, "in the history of seed %llu\n", static_cast<unsigned long long>(presentSeed));
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

struct History {
    std::uint64_t seed = 0;
    RelayConduct conduct = RelayConduct::honest;
    std::vector<ModelEvent> events;

    explicit History(std::uint64_t fromSeed) : seed(fromSeed) {
        Dice dice(seed);
        conduct = dice.below(2) == 0 ? RelayConduct::honest : RelayConduct::faulty;
        const auto count = fewestEvents + dice.below(mostEvents - fewestEvents + 1);
        events = drawEvents(dice, static_cast<std::size_t>(count), conduct);
    }
};

struct Outcome {
    std::string wrong;
    std::size_t messagesToRest = 0;
    std::size_t calls = 0;
    std::size_t doneCalls = 0;
    std::size_t answeredCalls = 0;
    std::size_t versions = 0;
};

Outcome play(const History& history) {
    presentSeed = history.seed;
    TemporaryFolder folder;
    TwoParties parties(history.seed, folder.path(), history.conduct);
    for (const auto& event : history.events) parties.happen(event);
    Outcome outcome{.wrong = parties.comeToRest()};
    outcome.messagesToRest = parties.messagesToRest();
    outcome.calls = parties.calls();
    outcome.doneCalls = parties.doneCalls();
    outcome.answeredCalls = parties.answeredCalls();
    outcome.versions = parties.versions();
    if (outcome.messagesToRest > mostMessagesToRest)
        outcome.wrong += std::to_string(outcome.messagesToRest) + " messages until both said the same\n";
    return outcome;
}

/// Shortens a failing history by removing events as long as it still fails.
History cutDown(History failing) {
    for (auto length = failing.events.size() / 2; length > 0; length /= 2)
        for (std::size_t from = 0; from + length <= failing.events.size();) {
            auto shorter = failing;
            const auto first = shorter.events.begin() + static_cast<std::ptrdiff_t>(from);
            shorter.events.erase(first, first + static_cast<std::ptrdiff_t>(length));
            if (play(shorter).wrong.empty())
                from += length;
            else
                failing = std::move(shorter);
        }
    return failing;
}

std::string report(const History& history) {
    const auto shortest = cutDown(history);
    auto text = "MORVEX_SEED=" + std::to_string(history.seed) + " repeats it; these events are enough:\n";
    for (const auto& event : shortest.events) text += "  " + event.text() + "\n";
    return text + play(shortest).wrong;
}

TEST(TwoPartyModel, BothEndsAgreeAfterwardsNothingIsLostAndNothingIsDoneTwice) {
    // Saves are flushed to the disk, which is cheap on a memory file system.
    const bool hasMemoryFolder = ::access("/dev/shm", W_OK) == 0;
    EnvironmentValue base("TMPDIR",
                          hasMemoryFolder ? "/dev/shm" : std::filesystem::temp_directory_path().string());
    for (int signal : {SIGABRT, SIGSEGV}) std::signal(signal, tellSeed);
    const char* chosen = std::getenv("MORVEX_SEED");
    const auto first = chosen ? std::strtoull(chosen, nullptr, 10) : firstSeed;
    const auto count = chosen ? 1 : cases(300, 100'000);
    Outcome all;
    std::size_t played = 0;
    for (; played < count && !HasFailure(); ++played) {
        const History history(first + played);
        const auto outcome = play(history);
        EXPECT_EQ(outcome.wrong, "") << report(history);
        all.messagesToRest = std::max(all.messagesToRest, outcome.messagesToRest);
        all.calls += outcome.calls;
        all.doneCalls += outcome.doneCalls;
        all.answeredCalls += outcome.answeredCalls;
        all.versions += outcome.versions;
    }
    for (int signal : {SIGABRT, SIGSEGV}) std::signal(signal, SIG_DFL);
    if (!chosen) EXPECT_GT(all.versions, played) << "the histories are about nothing";
    if (!chosen) EXPECT_GE(all.answeredCalls, played / 10) << "hardly any call is answered";
    tell("histories of a phone, a relay and a computer", played,
         "alike after at most " + std::to_string(all.messagesToRest) + " messages to one end; " +
             std::to_string(all.versions) + " versions of notes, none lost; " + std::to_string(all.calls) +
             " calls, " + std::to_string(all.doneCalls) + " done once, " + std::to_string(all.answeredCalls) +
             " of them answered");
}

} // namespace
} // namespace morvex
