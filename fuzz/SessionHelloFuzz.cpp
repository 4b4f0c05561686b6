// Any bytes as the phone's session hello: only the one that the phone signed is accepted.

#include "fuzz/RoundTrip.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/trust/SessionHandshake.h"

using namespace morvex;

namespace {

/// The phone of the seed.
const DeviceIdentity& phone() {
    static const DeviceIdentity identity(SigningPrivateKey::fromRaw(Bytes(keySize, 1)).value(),
                                         AgreementPrivateKey::fromRaw(Bytes(keySize, 2)).value());
    return identity;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const PairID pair{"PAIR"};
    static const auto ephemeral = EphemeralPrivateKey::fromRaw(Bytes(keySize, 3)).value().publicKey();
    static const auto genuine = makeSessionHello(phone(), ephemeral, pair);

    roundTrip<SessionHello>(data, size);
    const auto hello = decode<SessionHello>(ByteView{data, size});
    if (!hello) return 0;
    if (checkSessionHello(*hello, pair, phone().signingKey()))
        require(*hello == genuine, "an offer was accepted that the phone did not sign");
    return 0;
}
