// Any text as the code that a phone reads from the screen: either the phone contacts the relay in the code,
// with the token and for the pair in the code, or it reports why not and contacts nobody.

#include "fuzz/RoundTrip.h"
#include "phone/PhonePairing.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/ScriptedHttp.h"
#include "platform/memory/ScriptedRandom.h"
#include "platform/memory/ScriptedSockets.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/trust/Parovani.h"
#include "shared/wire/RelayCalls.h"

#include <string>

using namespace morvex;

namespace {

const auto phone =
    std::make_shared<const DeviceIdentity>(SigningPrivateKey::fromRaw(Bytes(keySize, 1)).value(),
                                           AgreementPrivateKey::fromRaw(Bytes(keySize, 2)).value());

struct World {
    ManualExecutor executor;
    ManualClock clock;
    ScriptedSockets sockets;
    ScriptedRandom random;
    ScriptedHttp http;
    Inbox inbox{clock, {}};
};

bool isNumber(const std::string& text) {
    return text.size() == 7 && text[3] == ' ' && text.find_first_not_of("0123456789 ") == std::string::npos;
}

void join(World& world, PhonePairing& pairing, const PairingBundle& bundle) {
    world.http.replies.push_back({200, encode(PripojitOdpoved{bundle.pairID})});
    const auto joined = world.executor.run(pairing.join(world.http));
    require(joined && *joined, "the pair of the code is not joined");
    const auto asked = decode<PripojitPozadavek>(world.http.requests.at(0).body);
    require(asked && asked->pairingToken == bundle.pairingToken, "another token than the code's");
    require(world.executor.run(pairing.leave()), "a pairing that cannot be left");
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    roundTrip<PairingBundle>(data, size);
    const std::string text(asText({data, size}));
    const auto bundle = Parovani::bundleOf(text);

    World world;
    const auto pairing = PhonePairing::create(
        text, phone, {{world.executor, world.clock, world.sockets}, world.random}, world.inbox);
    if (!pairing) {
        require(!pairing.error().popis().empty(), "a failure without words");
        return 0;
    }
    require(bundle && ProtocolVersion::current.isCompatible(bundle->v), "a code of a foreign version");
    require(RelayAddress::parse(bundle->relayURL).has_value(), "a relay without an address");
    require(isNumber((*pairing)->number()), "nothing to compare");
    const auto mac = (*pairing)->mac(world.clock.now());
    require(mac.deviceID == deviceID(bundle->signingKey) && mac.podpisovyKlic == bundle->signingKey &&
                mac.dohodovyKlic == bundle->agreementKey && mac.pairID == bundle->pairID,
            "another computer than the code's is kept");
    join(world, **pairing, *bundle);
    return 0;
}
