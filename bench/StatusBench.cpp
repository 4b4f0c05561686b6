#include "bench/Measure.h"
#include "bench/PlainCall.h"
#include "shared/base/Require.h"
#include "tests/support/ConnectedPair.h"

#include <cstdio>
#include <utility>
#include <vector>

// Measures a `mac.status` call of the phone through the relay and back, compared with frames of the same size
// that travel the same two hops unopened: from one socket through a plain server to another, which answers.

namespace morvex {
namespace {

constexpr int rounds = 5'000;

void bench() {
    const MacPayload call{MacPayload::ToolCall{"mac.status", "{}"}};
    ConnectedPair pair;
    auto status = pair.phone().call("mac.status", "{}");
    require(status && status->ok, "the companion tells no status");

    PlainCall plain(call, MacPayload{*status});
    std::vector<double> calls;
    const auto callOnce = [&] {
        require(pair.phone().call("mac.status", "{}").has_value(), "a call was lost");
        calls.push_back(Milliseconds(pair.phone().lastCall()).count());
    };
    const auto took = costs(rounds, {callOnce, [&] { plain.once(); }});
    const auto [whole, echo] = std::pair(took[0], took[1]);
    const auto onItsThread = median(calls);
    std::printf("mac.status, %zu bytes there and %zu back: call %.0f µs, plain echo %.0f µs (%.2f times); "
                "asked by another thread of the phone %.0f µs (%.2f times); processor %.0f and %.0f µs (%.2f "
                "times)\n",
                plain.asked(), plain.answered(), onItsThread * 1e3, echo.wall * 1e3, onItsThread / echo.wall,
                whole.wall * 1e3, whole.wall / echo.wall, whole.processor * 1e3, echo.processor * 1e3,
                whole.processor / echo.processor);
}

} // namespace
} // namespace morvex

int main() {
    morvex::bench();
}
