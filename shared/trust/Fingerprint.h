#pragma once

#include "shared/trust/Crypto.h"
#include "shared/wire/Identifiers.h"
#include "shared/wire/PublicKeys.h"

namespace morvex {

/// The identifier of the device that signs with this key: 26 characters that follow from the key, so that
/// nobody can choose them and everybody who holds the key can check them.
DeviceID deviceID(const SigningPublicKey& signingKey);

/// How a signature is checked; `ed25519Verify` everywhere but in tests that watch when it is called.
using SignatureCheck = bool (*)(ByteView signature, ByteView message, ByteView publicKey);

} // namespace morvex
