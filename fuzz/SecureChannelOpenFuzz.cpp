// Any bytes as an envelope from the relay: what the phone sealed opens, once; all else is refused, a genuine
// envelope with a single field of the input too, and a refusal leaves the channel usable.

#include "fuzz/RoundTrip.h"
#include "shared/trust/SecureChannel.h"

#include <algorithm>
#include <vector>

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

/// The envelopes sealed by the phone, in order. The first three are seeds.
const std::vector<Envelope>& genuine() {
    static const auto sealed = [] {
        auto phone = channel(2, 1, {{"PAIR"}, {"PHONE"}, {"MAC"}, DeviceRole::phone});
        std::vector<Envelope> envelopes;
        const auto seal = [&](const char* requestID, EnvelopeKind kind) {
            Uuid msgID;
            msgID.bytes[15] = static_cast<std::uint8_t>(envelopes.size() + 1);
            envelopes.push_back(
                phone.seal(asBytes(sealedContent), requestID, kind, envelopeLifetime, {now, msgID}).value());
        };
        seal("request", EnvelopeKind::data);
        seal("řeč", EnvelopeKind::data);
        seal("request", EnvelopeKind::ping);
        seal("request", EnvelopeKind::data);
        return envelopes;
    }();
    return sealed;
}

/// The last genuine envelope does not open with any one field of another.
void refuseFieldsOf(const Envelope& other, SecureChannel& mac) {
    const auto refuse = [&](auto... fields) {
        const auto refuseOne = [&](auto field) {
            auto changed = genuine().back();
            changed.*field = other.*field;
            require(changed == genuine().back() || !mac.open(changed, now), "a changed envelope opens");
        };
        (refuseOne(fields), ...);
    };
    refuse(&Envelope::v, &Envelope::pair, &Envelope::from, &Envelope::to, &Envelope::msgID,
           &Envelope::requestID, &Envelope::kind, &Envelope::createdAt, &Envelope::expiresAt,
           &Envelope::counter, &Envelope::nonce, &Envelope::ciphertext, &Envelope::tag);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
    roundTrip<Envelope>(data, size);
    const auto envelope = decode<Envelope>(ByteView(data, size));
    if (!envelope) return 0;
    auto mac = channel(1, 2, {{"PAIR"}, {"MAC"}, {"PHONE"}, DeviceRole::mac});
    refuseFieldsOf(*envelope, mac);
    const auto opened = mac.open(*envelope, now);
    require(opened.has_value() == std::ranges::count(genuine(), *envelope) == 1,
            "what opens is what the phone sealed");
    if (opened) require(asText(*opened) == sealedContent, "another content than the sealed one");
    require(!mac.open(*envelope, now), "an envelope opens twice");
    if (*envelope != genuine().back())
        require(mac.open(genuine().back(), now).has_value(), "the genuine envelope opens afterwards");
    return 0;
}
