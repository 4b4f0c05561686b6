#include "bench/BusyComputer.h"
#include "bench/CallingPhone.h"
#include "bench/ClientProcess.h"
#include "bench/Measure.h"
#include "tests/support/TemporaryFolder.h"

#include MORVEX_BASICS

#include <algorithm>
#include <cstdio>
#include <fstream>
#include <optional>
#include <string>
#include <thread>

// A phone calls while the computer is busy: one call that takes 48 seconds is followed by 16,000 small calls,
// or by 16 that bring a mebibyte each, or by so many of those that the relay stops reading the phone. Reports
// which of them are answered and whether the link stays, compared with the same calls without the long one.
// All times are real. Each case runs in its own process, so that memory left by the case before does not
// count.

namespace morvex {
namespace {

using namespace std::chrono_literals;

constexpr auto busyTime = 48s;
constexpr std::size_t smallCalls = 16'000;
constexpr std::size_t largeCalls = 16;
constexpr std::size_t tooManyLargeCalls = 48;
constexpr std::size_t largeContent = std::size_t{1024} * 1024;

/// Without progress for this long, the remaining calls count as dropped. The long call does not take that
/// long.
constexpr auto patience = 120s;

MacPayload::ToolCall status(std::size_t) {
    return {"mac.status", "{}"};
}

MacPayload::ToolCall newFile(std::size_t number) {
    return {"mac.files.write", R"({"path":"new-)" + std::to_string(number) + R"(.txt","content":")" +
                                   std::string(largeContent, 'x') + R"("})"};
}

MacPayload::ToolCall longCall(std::size_t) {
    return {"mac.files.read", R"({"path":"read-first.txt"})"};
}

double seconds(std::chrono::steady_clock::duration time) {
    return Milliseconds(time).count() / 1000;
}

/// A relay, a computer and a phone that have a session.
struct BusyLink {
    BusyLink() {
        std::ofstream(home.path() / "read-first.txt") << "short";
        while (!phone.tally().isServed) std::this_thread::sleep_for(1ms);
    }

    TemporaryFolder home;
    std::unique_ptr<SystemClock> clock = SystemClock::create().value();
    SystemRandom random;
    Relay relay;
    Device macDevice;
    Device phoneDevice;
    PairID pair = pairOf(macDevice, phoneDevice, relay.address(), macDevice.main, *clock);
    CallingPhone phone{phoneDevice.link, phoneDevice.linkTo(macDevice, pair, relay.address(),
                                                            DeviceRole::phone, *clock, random)};
    BusyComputer mac{macDevice, phoneDevice.asPeer(pair, relay.address(), DeviceRole::phone, *clock), *clock,
                     random, home.path()};
};

/// What the phone observed, and the peak memory of the process.
struct Watched {
    CallingPhone::Tally tally;
    double mostMebibytes = 0;
};

Watched watch(const CallingPhone& phone, std::size_t calls) {
    Watched watched;
    do {
        std::this_thread::sleep_for(10ms);
        watched.tally = phone.tally();
        watched.mostMebibytes = std::max(watched.mostMebibytes, residentMebibytes());
    } while (watched.tally.answered() < calls &&
             std::chrono::steady_clock::now() - watched.tally.lastSign < patience);
    return watched;
}

void print(const Watched& watched, BusyLink& link, double mebibytesBefore) {
    const auto& tally = watched.tally;
    std::printf("  %zu answered, %zu of them with a refusal; %zu not answered, %zu not sent\n",
                tally.answered(), tally.refused, tally.sent - tally.answered(), tally.lost);
    std::printf("  connections of the computer: %d; sessions: %zu; errors of the phone's link: %zu; trouble "
                "that the computer shows: \"%s\"\n",
                link.mac.connections(), tally.sessions, tally.complaints, link.mac.trouble().c_str());
    std::printf("  memory of computer, phone and relay together: %.0f MiB more than %.0f MiB\n",
                watched.mostMebibytes - mebibytesBefore, mebibytesBefore);
}

/// Sends the calls after a long one.
void runBehindLongCall(std::size_t calls, const CallingPhone::Calls& call) {
    BusyLink link;
    const auto before = residentMebibytes();
    const auto begin = std::chrono::steady_clock::now();
    link.mac.occupyFileWork(busyTime);
    link.phone.call(1, longCall);
    link.phone.call(calls, call);
    const auto watched = watch(link.phone, calls + 1);
    std::printf("behind a call of %.1f s: the last answer %.2f s after the answer to that call\n",
                seconds(watched.tally.firstAnswer - begin),
                seconds(watched.tally.lastAnswer - watched.tally.firstAnswer));
    print(watched, link, before);
}

void runAlone(std::size_t calls, const CallingPhone::Calls& call) {
    BusyLink link;
    const auto before = residentMebibytes();
    const auto begin = std::chrono::steady_clock::now();
    link.phone.call(calls, call);
    const auto watched = watch(link.phone, calls);
    std::printf("with nothing before them: the last answer %.2f s after the first was sent\n",
                seconds(watched.tally.lastAnswer - begin));
    print(watched, link, before);
}

void inProcessOfItsOwn(const std::function<void()>& work) {
    const ClientProcess process([&](ClientProcess::Line& line) {
        work();
        (void)std::fflush(stdout);
        line.report();
        line.stay();
    });
    process.waitUntilDone();
}

void bench(const char* what, std::size_t calls, const CallingPhone::Calls& call) {
    std::printf("%zu calls of %s\n", calls, what);
    (void)std::fflush(stdout);
    inProcessOfItsOwn([&] { runAlone(calls, call); });
    inProcessOfItsOwn([&] { runBehindLongCall(calls, call); });
}

} // namespace
} // namespace morvex

int main() {
    morvex::bench("mac.status", morvex::smallCalls, morvex::status);
    morvex::bench("mac.files.write of a mebibyte", morvex::largeCalls, morvex::newFile);
    morvex::bench("mac.files.write of a mebibyte", morvex::tooManyLargeCalls, morvex::newFile);
}
