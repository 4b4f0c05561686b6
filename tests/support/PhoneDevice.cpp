#include "tests/support/PhoneDevice.h"

#include "shared/base/Try.h"
#include "shared/trust/SessionHandshake.h"
#include "shared/wire/Json.h"

namespace morvex::test {

Envelope PhoneDevice::newHello() {
    ephemeral_ = EphemeralPrivateKey::generate();
    return keyExchangeWith(encode(helloWith(ephemeral_->publicKey())));
}

SessionHello PhoneDevice::helloWith(const AgreementPublicKey& ephemeral) const {
    return makeSessionHello(*identita, ephemeral, {"PAIR"});
}

Envelope PhoneDevice::keyExchangeWith(std::string bytes) const {
    return keyExchange({"PAIR"}, identita->deviceID(), mac_, "session", toBytes(bytes), clock_.now(),
                       random_.uuid());
}

void PhoneDevice::meet(const DeviceIdentity& mac, const Envelope& hello) {
    auto pairKey = identita->pairKey(remembered(mac, DeviceRole::mac)).value();
    auto ephemeral = decode<SessionHello>(hello.ciphertext).value().ephemeral;
    channel_ = SecureChannel::create(pairKey, ephemeral_.value(), ephemeral,
                                     {{"PAIR"}, identita->deviceID(), mac_, DeviceRole::phone})
                   .value();
}

Envelope PhoneDevice::seal(const MacPayload& payload, std::string requestID) {
    return channel_.value()
        .seal(asBytes(encode(payload)), std::move(requestID), EnvelopeKind::data, envelopeLifetime,
              {clock_.now(), random_.uuid()})
        .value();
}

Envelope PhoneDevice::sealText(std::string_view plaintext, EnvelopeKind kind) {
    return channel_.value()
        .seal(asBytes(plaintext), "R-1", kind, envelopeLifetime, {clock_.now(), random_.uuid()})
        .value();
}

Result<MacPayload> PhoneDevice::open(const Envelope& envelope) {
    TRY(auto, plaintext, channel_.value().open(envelope, clock_.now()));
    return decode<MacPayload>(plaintext);
}

} // namespace morvex::test
