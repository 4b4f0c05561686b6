#pragma once

#include "shared/trust/Fingerprint.h"
#include "shared/wire/SessionHello.h"

#include <string>

namespace morvex {

class DeviceIdentity;

/// The text that the signature of a session hello covers.
std::string sessionHelloSignedText(const PairID& pairID, const DeviceID& device,
                                   const AgreementPublicKey& ephemeral);

/// This device's key offer for one session; `ephemeral` is the public half of a fresh `EphemeralPrivateKey`.
SessionHello makeSessionHello(const DeviceIdentity& identity, const AgreementPublicKey& ephemeral,
                              const PairID& pairID);

/// True when the hello names the device of the stored signing key of the peer and that key signed it for this
/// pair. The name is checked first.
bool checkSessionHello(const SessionHello& hello, const PairID& pairID, const SigningPublicKey& peerKey,
                       SignatureCheck verify = ed25519Verify);

} // namespace morvex
