#pragma once

#include "shared/trust/DeviceIdentity.h"
#include "shared/wire/PairedPeer.h"

#include <memory>

namespace morvex::test {

inline std::shared_ptr<const DeviceIdentity> newIdentity() {
    return std::make_shared<const DeviceIdentity>(DeviceIdentity::generate());
}

/// How `identity` is remembered by the device at the other end of the pair.
inline PairedPeer remembered(const DeviceIdentity& identity, DeviceRole role) {
    return {.pairID = {"PAIR"},
            .relayURL = "https://relay.example",
            .deviceID = identity.deviceID(),
            .podpisovyKlic = identity.signingKey(),
            .dohodovyKlic = identity.agreementKey(),
            .role = role,
            .potvrzeno = dateFromSeconds(1'800'000'000)};
}

} // namespace morvex::test
