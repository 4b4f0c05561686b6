#include "tests/e2e/EndToEnd.h"
#include "tests/support/Effort.h"
#include "tests/support/EnvironmentValue.h"

#include <algorithm>
#include <csignal>
#include <cstdlib>
#include <functional>
#include <set>

namespace morvex {
namespace {

/// A program, run until it can be told to end, and the codes with which it may end then.
struct Told {
    std::string what;
    std::function<std::unique_ptr<Program>()> start;
    std::set<int> codes;
};

class SignalsTest : public EndToEnd {
  protected:
    std::vector<Told> programs() {
        return {{"morvex", [this] { return startMac(); }, {0}},
                {"morvex-relay",
                 [this] {
                     auto server = std::make_unique<Program>(
                         "morvex-relay",
                         std::vector<std::string>{"--listen", "127.0.0.1:0", "--db", ":memory:"},
                         environment("relay"));
                     server->waitForLine("listening on");
                     return server;
                 },
                 {0}},
                // A command that is interrupted twice ends at once, by its own code or by the signal.
                {"morvex-phone",
                 [this] {
                     auto device = std::make_unique<Program>("morvex-phone",
                                                             std::vector<std::string>{"--json", "pair", "-"},
                                                             environment("phone"));
                     device->waitForHandler(SIGTERM);
                     return device;
                 },
                 {130, 128 + SIGTERM, 128 + SIGINT}}};
    }

  private:
    static std::string sanitizing() {
        const char* before = std::getenv("ASAN_OPTIONS");
        return (before ? before + std::string(":") : "") + "detect_leaks=0";
    }

    /// The leak sanitizer traces the threads, which is impossible here since the programs are already traced.
    EnvironmentValue unseenLeaks_{"ASAN_OPTIONS", sanitizing()};
};

TEST_F(SignalsTest, ASecondSignalAtAnyDistanceChangesNothingOfTheEnd) {
    std::size_t count = 0;
    for (const auto& told : programs()) {
        const auto whole = told.start()->endBySignals(SIGTERM, SIGTERM, 0).steps;
        ASSERT_GT(whole, 0U) << told.what;
        const auto stride = std::max<std::size_t>(1, whole / cases(50, whole));
        for (std::size_t distance = 1; distance <= whole; distance += stride, ++count) {
            auto program = told.start();
            const auto ended = program->endBySignals(SIGTERM, count % 2 == 0 ? SIGTERM : SIGINT, distance);
            EXPECT_TRUE(told.codes.contains(ended.code))
                << told.what << ", " << distance << " of " << ended.steps << " steps: " << ended.code << "\n"
                << program->output();
        }
    }
    tell("Second signals, some system calls later each time", count, "each end as told once");
}

TEST_F(SignalsTest, SignalsWithoutAPauseUntilTheEndChangeNothingOfIt) {
    std::size_t count = 0;
    for (const auto& told : programs())
        for (std::size_t i = 0; i < cases(5, 100); ++i) {
            auto program = told.start();
            for (; !program->hasEnded(); ++count) program->signal(i % 2 == 0 ? SIGTERM : SIGINT);
            EXPECT_TRUE(told.codes.contains(program->wait())) << told.what << ": " << program->wait() << "\n"
                                                              << program->output();
        }
    tell("Signals without a pause", count, "each end as told once");
}

} // namespace
} // namespace morvex
