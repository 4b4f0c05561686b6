// Any bytes as the introduction of a phone: accepted is only what the phone signed, for its own pair.

#include "fuzz/RoundTrip.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/trust/Parovani.h"

using namespace morvex;

namespace {

const PairID pair{"PAIR"};

/// The hello of the phone in the seeds.
const PairingHello& genuine() {
    static const auto hello =
        Parovani::makeHello(DeviceIdentity(SigningPrivateKey::fromRaw(Bytes(keySize, 3)).value(),
                                           AgreementPrivateKey::fromRaw(Bytes(keySize, 4)).value()),
                            pair);
    return hello;
}

void judge(const PairingHello& hello) {
    require(Parovani::checkHello(hello, pair) == (hello == genuine()),
            "what is accepted is what the phone signed");
}

/// Checks the genuine hello with one part replaced by another hello's.
void judgePartsOf(const PairingHello& other) {
    auto changed = genuine();
    changed.agreementKey = other.agreementKey;
    judge(changed);
    changed = genuine();
    changed.signature = other.signature;
    judge(changed);
    changed = genuine();
    changed.device = other.device;
    judge(changed);
    changed.signingKey = other.signingKey;
    changed.device = deviceID(other.signingKey);
    judge(changed);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    roundTrip<PairingHello>(data, size);
    const auto hello = decode<PairingHello>(ByteView(data, size));
    if (!hello) return 0;
    judge(*hello);
    judgePartsOf(*hello);
    require(!Parovani::checkHello(genuine(), PairID{"OTHER" + hello->device.rawValue}),
            "a hello for another pair is accepted");
    return 0;
}
