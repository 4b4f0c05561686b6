#include "tests/e2e/EndToEnd.h"
#include "tests/support/Effort.h"

#include <chrono>
#include <csignal>
#include <functional>
#include <set>

namespace morvex {
namespace {

using namespace std::chrono_literals;

/// Every program, run until it can be told to end, and the codes with which it may end then.
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
                     return std::make_unique<Program>("morvex-phone",
                                                      std::vector<std::string>{"--json", "pair", "-"},
                                                      environment("phone"));
                 },
                 {130, 128 + SIGTERM, 128 + SIGINT}}};
    }
};

/// Waits without giving the processor away, so that the distance is about what it says.
void spin(std::chrono::microseconds time) {
    const auto end = std::chrono::steady_clock::now() + time;
    while (std::chrono::steady_clock::now() < end) continue;
}

TEST_F(SignalsTest, ASecondSignalAtAnyDistanceChangesNothingOfTheEnd) {
    const std::chrono::microseconds step(cases(4000, 250));
    std::size_t count = 0;
    for (const auto& told : programs())
        for (auto distance = 0us;; distance += step) {
            auto program = told.start();
            program->signal(SIGTERM);
            spin(distance);
            const bool hadEnded = program->hasEnded();
            program->signal(count % 2 == 0 ? SIGTERM : SIGINT);
            EXPECT_TRUE(told.codes.contains(program->wait()))
                << told.what << " after " << distance.count() << " us: " << program->wait() << "\n"
                << program->output();
            ++count;
            if (hadEnded) break;
        }
    tell("Second signals, one step further each time", count, "no program ended otherwise than told once");
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
    tell("Signals without a pause", count, "no program ended otherwise than told once");
}

} // namespace
} // namespace morvex
