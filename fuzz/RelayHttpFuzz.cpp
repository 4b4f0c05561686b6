#include "relay/PairCalls.h"
#include "shared/base/Require.h"
#include "shared/wire/Json.h"
#include "shared/wire/RelayCalls.h"

#include <array>
#include <cstddef>
#include <cstdint>

using namespace morvex;

namespace {

constexpr std::array paths{"/v1/pair/create", "/v1/pair/join", "/v1/device/revoke"};
constexpr Date now{std::chrono::seconds{1'800'000'000}};

/// The first byte chooses the call, the rest is its body.
void call(PairCalls& calls, std::uint8_t choice, std::string_view body) {
    const auto reply = calls.answer(paths[choice % paths.size()], body, now);
    vyzaduj(reply.trouble.empty(), "the store has no reason to fail");
    if (reply.status == 204) return;
    if (reply.status == 200) {
        vyzaduj(decode<PripojitOdpoved>(reply.body).has_value(), "a reply names the pair");
        return;
    }
    const auto refused = decode<VaporDuvod>(reply.body);
    vyzaduj(refused && refused->reason, "a refusal has a reason");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    if (size == 0) return 0;
    static PairStore store = PairStore::open(":memory:").value();
    static int made = 0;
    // Every pair has the token of the seeds once; a used one gives way to a new name.
    PairCalls calls{
        store,
        [] { return FreshPair{PairID{"PAIR" + std::to_string(++made)}, "token" + std::to_string(made)}; }};
    call(calls, data[0], asText({data + 1, size - 1}));
    return 0;
}
