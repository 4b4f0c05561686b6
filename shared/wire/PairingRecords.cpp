#include "shared/wire/Describe.h"
#include "shared/wire/PairedPeer.h"
#include "shared/wire/PairingBundle.h"
#include "shared/wire/PairingHello.h"
#include "shared/wire/SessionHello.h"

namespace morvex {

void describe(auto& io, Is<PairingBundle> auto& bundle) {
    io.required("agreementKey", bundle.agreementKey);
    io.required("pairID", bundle.pairID);
    io.required("pairingToken", bundle.pairingToken);
    io.required("relayURL", bundle.relayURL);
    io.required("signingKey", bundle.signingKey);
    io.required("v", bundle.v);
}

void describe(auto& io, Is<PairingHello> auto& hello) {
    io.required("device", hello.device);
    io.required("signingKey", hello.signingKey);
    io.required("agreementKey", hello.agreementKey);
    io.required("signature", hello.signature);
}

void describe(auto& io, Is<SessionHello> auto& hello) {
    io.required("device", hello.device);
    io.required("ephemeral", hello.ephemeral);
    io.required("signature", hello.signature);
}

void describe(auto& io, Is<PairedPeer> auto& peer) {
    io.required("pairID", peer.pairID);
    io.required("relayURL", peer.relayURL);
    io.required("deviceID", peer.deviceID);
    io.required("podpisovyKlic", peer.podpisovyKlic);
    io.required("dohodovyKlic", peer.dohodovyKlic);
    io.required("role", peer.role);
    io.required("potvrzeno", peer.potvrzeno);
}

template struct Codec<PairingBundle>;
template struct Codec<PairingHello>;
template struct Codec<SessionHello>;
template struct Codec<PairedPeer>;

} // namespace morvex
