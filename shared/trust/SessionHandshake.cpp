#include "shared/trust/SessionHandshake.h"

#include "shared/trust/DeviceIdentity.h"

namespace morvex {

std::string sessionHelloSignedText(const PairID& pairID, const DeviceID& device,
                                   const AgreementPublicKey& ephemeral) {
    return "ts-session-hello|" + pairID.rawValue + "|" + device.rawValue + "|" + ephemeral.text();
}

SessionHello makeSessionHello(const DeviceIdentity& identity, const AgreementPublicKey& ephemeral,
                              const PairID& pairID) {
    auto text = sessionHelloSignedText(pairID, identity.deviceID(), ephemeral);
    return {.device = identity.deviceID(), .ephemeral = ephemeral, .signature = identity.sign(asBytes(text))};
}

bool checkSessionHello(const SessionHello& hello, const PairID& pairID, const SigningPublicKey& peerKey,
                       SignatureCheck verify) {
    if (deviceID(peerKey) != hello.device) return false;
    auto text = sessionHelloSignedText(pairID, hello.device, hello.ephemeral);
    return verify(hello.signature, asBytes(text), peerKey.raw);
}

} // namespace morvex
