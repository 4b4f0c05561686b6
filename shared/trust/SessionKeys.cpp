#include "shared/trust/SessionKeys.h"

#include "shared/base/Try.h"

#include <string>

namespace morvex {

Result<SessionKeys> SessionKeys::derive(const PairKey& pairKey, const EphemeralPrivateKey& mujEfemerni,
                                        const AgreementPublicKey& peerEphemeral, DeviceRole role) {
    TRY(const auto, shared, mujEfemerni.sharedSecret(peerEphemeral));
    auto base = hkdfSha256<keySize>(shared.view(), pairKey.view(), asBytes("ts-session-v1"));
    auto directionKey = [&base](DeviceRole from, DeviceRole to) {
        auto label = "ts-" + std::string(rawValue(from)) + "->" + std::string(rawValue(to));
        return ChannelKey(hkdfSha256<keySize>(base.view(), {}, asBytes(label)));
    };
    auto other = role == DeviceRole::mac ? DeviceRole::phone : DeviceRole::mac;
    return SessionKeys{.odesilaci = directionKey(role, other), .prijimaci = directionKey(other, role)};
}

} // namespace morvex
