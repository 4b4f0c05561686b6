#include "shared/trust/DeviceIdentity.h"

#include "shared/trust/Fingerprint.h"
#include "shared/trust/Parovani.h"

namespace morvex {

DeviceIdentity DeviceIdentity::generate() {
    return {SigningPrivateKey::generate(), AgreementPrivateKey::generate()};
}

DeviceIdentity::DeviceIdentity(SigningPrivateKey podpisovy, AgreementPrivateKey dohodovy)
    : podpisovy_(std::move(podpisovy)),
      dohodovy_(std::move(dohodovy)),
      deviceID_(morvex::deviceID(podpisovy_.publicKey())) {}

Result<PairKey> DeviceIdentity::pairKey(const PairedPeer& peer) const {
    return Parovani::pairKey(dohodovy_, peer.dohodovyKlic, deviceID_, peer.deviceID);
}

} // namespace morvex
