#include "bench/PlainCall.h"

#include "shared/base/Require.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/wire/Json.h"
#include "shared/wire/RelayMessage.h"
#include "tests/support/SampleEnvelope.h"

#include <utility>

namespace morvex {

namespace {

/// A text as long as a frame with this payload.
std::string frameOf(const MacPayload& payload) {
    const auto device = DeviceIdentity::generate().deviceID();
    auto envelope = sampleEnvelope({"PAIR"}, device, device, toBytes(encode(payload)));
    return std::string(encode(RelayMessage{RelayMessage::Forward{std::move(envelope)}}).size(), 'x');
}

} // namespace

PlainCall::PlainCall(const MacPayload& call, const MacPayload& result)
    : asked_(frameOf(call)), answered_(frameOf(result)), answering_([this] {
          while (far_.read()) far_.write(answered_);
      }) {}

PlainCall::~PlainCall() {
    server_.stop();
    answering_.join();
}

void PlainCall::once() {
    near_.write(asked_);
    require(near_.read() == answered_, "an echo was lost");
}

} // namespace morvex
