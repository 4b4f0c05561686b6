#include "shared/trust/Parovani.h"

#include "shared/base/Try.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/wire/Json.h"

#include <algorithm>

namespace morvex::Parovani {

std::string qrText(const PairingBundle& bundle) {
    return encode(bundle);
}

Result<PairingBundle> bundleOf(std::string_view qrText) {
    return decode<PairingBundle>(qrText);
}

std::string helloSignedText(const PairID& pairID, const DeviceID& device,
                            const AgreementPublicKey& agreementKey) {
    return "ts-pair-hello|" + pairID.rawValue + "|" + device.rawValue + "|" + agreementKey.text();
}

PairingHello makeHello(const DeviceIdentity& identity, const PairID& pairID) {
    auto text = helloSignedText(pairID, identity.deviceID(), identity.agreementKey());
    return {.device = identity.deviceID(),
            .signingKey = identity.signingKey(),
            .agreementKey = identity.agreementKey(),
            .signature = identity.sign(asBytes(text))};
}

bool checkHello(const PairingHello& hello, const PairID& pairID, SignatureCheck verify) {
    if (deviceID(hello.signingKey) != hello.device) return false;
    auto text = helloSignedText(pairID, hello.device, hello.agreementKey);
    return verify(hello.signature, asBytes(text), hello.signingKey.raw);
}

Result<PairKey> pairKey(const AgreementPrivateKey& dohodovy, const AgreementPublicKey& peerKey,
                        const DeviceID& device, const DeviceID& peer) {
    TRY(const auto, shared, dohodovy.sharedSecret(peerKey));
    const auto& [first, second] = std::minmax(device.rawValue, peer.rawValue);
    auto salt = first + "|" + second;
    return PairKey(hkdfSha256<keySize>(shared.view(), asBytes(salt), asBytes("ts-pair-v1")));
}

std::string comparisonNumber(const PairKey& pairKey) {
    return comparisonNumber(hkdfSha256<4>(pairKey.view(), {}, asBytes("ts-sas")).view());
}

std::string comparisonNumber(std::span<const std::uint8_t, 4> derived) {
    std::uint32_t number = 0;
    for (auto byte : derived) number = number << 8 | byte;
    auto digits = std::to_string(number % 1'000'000);
    digits.insert(0, 6 - digits.size(), '0');
    return digits.insert(3, " ");
}

} // namespace morvex::Parovani
