#include "tests/support/ScriptedDevice.h"

#include "shared/base/Require.h"
#include "shared/trust/SessionHandshake.h"
#include "shared/wire/Json.h"
#include "shared/wire/SessionHello.h"

#include <utility>

namespace morvex {

PairedPeer ScriptedDevice::asPeer(const std::string& relayURL) const {
    return {pair,
            relayURL,
            identity.deviceID(),
            identity.signingKey(),
            identity.agreementKey(),
            role_,
            dateFromSeconds(1'700'000'000)};
}

void ScriptedDevice::attach(std::shared_ptr<ScriptedSocket> socket, const DeviceIdentity& other) {
    socket_ = std::move(socket);
    taken_ = 0;
    channel_.reset();
    const auto role = role_ == DeviceRole::phone ? DeviceRole::mac : DeviceRole::phone;
    other_ = PairedPeer{pair, "", other.deviceID(), other.signingKey(), other.agreementKey(), role, {}};
}

void ScriptedDevice::logIn(bool thisIsOnline) {
    deliver({RelayMessage::Challenge{toBytes("nonce"), ProtocolVersion::current}});
    deliver({RelayMessage::Authenticated{thisIsOnline}});
}

void ScriptedDevice::refuseLogin(RelayFailure code, const std::string& detail) {
    deliver({RelayMessage::Challenge{toBytes("nonce"), ProtocolVersion::current}});
    deliver({RelayMessage::Failure{code, detail}});
}

void ScriptedDevice::exchangeHellos() {
    auto ephemeral = EphemeralPrivateKey::generate();
    auto mine = makeSessionHello(identity, ephemeral.publicKey(), pair);
    for (const auto& envelope : takeEnvelopes()) {
        if (envelope.kind != EnvelopeKind::keyExchange) continue;
        auto theirs = decode<SessionHello>(envelope.ciphertext).value();
        channel_ = SecureChannel::create(identity.pairKey(*other_).value(), ephemeral, theirs.ephemeral,
                                         {pair, identity.deviceID(), other_->deviceID, role_})
                       .value();
    }
    require(channel_.has_value(), "the other device sent no hello");
    deliver({RelayMessage::Forward{keyExchange(pair, identity.deviceID(), other_->deviceID, "session",
                                               toBytes(encode(mine)), clock_.now(), random_.uuid())}});
}

void ScriptedDevice::pong() {
    if (socket_) socket_->pong();
}

void ScriptedDevice::deliver(RelayMessage message) {
    socket_->deliver(encode(message));
}

Envelope ScriptedDevice::seal(const MacPayload& payload, std::string requestID) {
    return channel_
        ->seal(asBytes(encode(payload)), std::move(requestID), EnvelopeKind::data, envelopeLifetime,
               {clock_.now(), random_.uuid()})
        .value();
}

void ScriptedDevice::send(MacPayload payload, std::string requestID) {
    deliver({RelayMessage::Forward{seal(payload, std::move(requestID))}});
}

std::vector<ScriptedDevice::Received> ScriptedDevice::take() {
    std::vector<Received> received;
    for (const auto& envelope : takeEnvelopes())
        if (envelope.kind == EnvelopeKind::data)
            received.push_back({decode<MacPayload>(channel_->open(envelope, clock_.now()).value()).value(),
                                envelope.requestID});
    return received;
}

std::vector<Envelope> ScriptedDevice::takeEnvelopes() {
    std::vector<Envelope> envelopes;
    for (; taken_ < socket_->sent.size(); ++taken_) {
        auto message = decode<RelayMessage>(socket_->sent[taken_]).value();
        if (auto* forward = message.as<RelayMessage::Forward>()) envelopes.push_back(forward->envelope);
    }
    return envelopes;
}

} // namespace morvex
