#include "shared/trust/Fingerprint.h"

#include "shared/trust/Base32.h"

namespace morvex {

DeviceID deviceID(const SigningPublicKey& signingKey) {
    return {Base32::encode(ByteView(sha256(signingKey.raw)).first<16>())};
}

} // namespace morvex
