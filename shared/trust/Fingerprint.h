#pragma once

#include "shared/trust/Crypto.h"
#include "shared/wire/Identifiers.h"
#include "shared/wire/PublicKeys.h"

namespace morvex {

/// The identifier of the device that signs with this key: 26 characters derived from the key, so that nobody
/// can choose them and everybody who has the key can check them.
DeviceID deviceID(const SigningPublicKey& signingKey);

/// The function that checks signatures: `ed25519Verify`, except in tests that watch when it is called.
using SignatureCheck = bool (*)(ByteView signature, ByteView message, ByteView publicKey);

} // namespace morvex
