// Any bytes as an envelope from the relay: only what the phone sealed opens, and a refusal leaves the channel
// usable.

#include "shared/base/Require.h"
#include "shared/trust/SecureChannel.h"
#include "shared/wire/Json.h"

using namespace morvex;

namespace {

// The seeds were sealed with these keys, at this time, with this content.
constexpr std::string_view sealedContent = "seed";
const Date now = dateFromSeconds(1795000000);

EphemeralPrivateKey keyOf(std::uint8_t byte) {
    return EphemeralPrivateKey::fromRaw(Bytes(keySize, byte)).value();
}

SecureChannel channel(std::uint8_t own, std::uint8_t peer, SecureChannel::Ends ends) {
    return SecureChannel::create(PairKey(SecretKeyBytes{}), keyOf(own), keyOf(peer).publicKey(),
                                 std::move(ends))
        .value();
}

Envelope sealedByThePhone() {
    auto phone = channel(2, 1, {{"PAIR"}, {"PHONE"}, {"MAC"}, DeviceRole::phone});
    Envelope envelope;
    for (std::uint8_t last = 1; last <= 10; ++last) {
        Uuid msgID;
        msgID.bytes[15] = last;
        envelope =
            phone.seal(asBytes(sealedContent), "request", EnvelopeKind::data, envelopeLifetime, {now, msgID})
                .value();
    }
    return envelope;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    static const Envelope genuine = sealedByThePhone();
    auto envelope = decode<Envelope>(ByteView(data, size));
    if (!envelope) return 0;
    auto mac = channel(1, 2, {{"PAIR"}, {"MAC"}, {"PHONE"}, DeviceRole::mac});
    auto opened = mac.open(*envelope, now);
    vyzaduj(!opened || asText(*opened) == sealedContent, "only what the phone sealed opens");
    if (!opened || envelope->counter < genuine.counter)
        vyzaduj(mac.open(genuine, now).has_value(), "the genuine envelope opens afterwards");
    return 0;
}
