#include "bench/Measure.h"
#include "bench/PlainServer.h"
#include "bench/PlainSocket.h"
#include "shared/base/Base64.h"
#include "shared/base/Require.h"
#include "shared/wire/Json.h"
#include "tests/support/ConnectedPair.h"
#include "tests/support/SampleEnvelope.h"

#include <cstdio>
#include <string>
#include <thread>
#include <utility>
#include <vector>

// A `mac.status` call of the phone through the relay and back, beside frames of the same size that travel the
// same two hops without being opened: from one socket through a plain server to another, which answers.

namespace morvex {
namespace {

constexpr int rounds = 5'000;

/// As long as a frame with this payload.
std::size_t frameSize(const MacPayload& payload) {
    const auto device = DeviceIdentity::generate().deviceID();
    auto envelope = sampleEnvelope({"PAIR"}, device, device, toBytes(encode(payload)));
    return encode(RelayMessage{RelayMessage::Forward{std::move(envelope)}}).size();
}

/// The far end of the baseline: answers every frame.
class Answerer {
  public:
    Answerer(std::uint16_t port, std::string answer)
        : socket_(port), thread_([this, answer = std::move(answer)] {
              while (socket_.read()) socket_.write(answer);
          }) {}

    ~Answerer() { thread_.join(); }

    Answerer(const Answerer&) = delete;
    Answerer& operator=(const Answerer&) = delete;

  private:
    PlainSocket socket_;
    std::thread thread_;
};

void bench() {
    const MacPayload call{MacPayload::ToolCall{"mac.status", "{}"}};
    ConnectedPair pair;
    auto status = pair.phone().call("mac.status", "{}");
    vyzaduj(status && status->ok, "the companion tells no status");

    const std::string asked(frameSize(call), 'x');
    const std::string answered(frameSize(MacPayload{*status}), 'x');
    PlainServer server(PlainServer::Task::forward);
    PlainSocket near(server.port());
    Answerer far(server.port(), answered);
    std::vector<double> calls;
    const auto callOnce = [&] {
        vyzaduj(pair.phone().call("mac.status", "{}").has_value(), "a call was lost");
        calls.push_back(Milliseconds(pair.phone().lastCall()).count());
    };
    const auto echoOnce = [&] {
        near.write(asked);
        vyzaduj(near.read() == answered, "an echo was lost");
    };
    const auto took = costs(rounds, {callOnce, echoOnce});
    server.stop();
    const auto [whole, echo] = std::pair(took[0], took[1]);
    const auto onItsThread = median(calls);
    std::printf("mac.status, %zu bytes there and %zu back: call %.0f µs, plain echo %.0f µs (%.2f times); "
                "asked by another thread of the phone %.0f µs (%.2f times); processor %.0f and %.0f µs (%.2f "
                "times)\n",
                asked.size(), answered.size(), onItsThread * 1e3, echo.wall * 1e3, onItsThread / echo.wall,
                whole.wall * 1e3, whole.wall / echo.wall, whole.processor * 1e3, echo.processor * 1e3,
                whole.processor / echo.processor);
}

} // namespace
} // namespace morvex

int main() {
    morvex::bench();
}
