#include "tests/support/ScriptedPhone.h"

#include "shared/base/Require.h"
#include "shared/trust/SessionHandshake.h"
#include "shared/wire/Json.h"
#include "shared/wire/SessionHello.h"

#include <utility>

namespace morvex {

PairedPeer ScriptedPhone::asPeer(const std::string& relayURL) const {
    return {pair,
            relayURL,
            identity.deviceID(),
            identity.signingKey(),
            identity.agreementKey(),
            DeviceRole::phone,
            dateFromSeconds(1'700'000'000)};
}

void ScriptedPhone::attach(std::shared_ptr<ScriptedSocket> socket, const DeviceIdentity& mac) {
    socket_ = std::move(socket);
    taken_ = 0;
    channel_.reset();
    mac_ = PairedPeer{pair, "", mac.deviceID(), mac.signingKey(), mac.agreementKey(), DeviceRole::mac, {}};
}

void ScriptedPhone::logIn(bool phoneIsOnline) {
    deliver({RelayMessage::Challenge{toBytes("nonce"), ProtocolVersion::current}});
    deliver({RelayMessage::Authenticated{phoneIsOnline}});
}

void ScriptedPhone::refuseLogin(RelayFailure code, const std::string& detail) {
    deliver({RelayMessage::Challenge{toBytes("nonce"), ProtocolVersion::current}});
    deliver({RelayMessage::Failure{code, detail}});
}

void ScriptedPhone::exchangeHellos() {
    auto ephemeral = EphemeralPrivateKey::generate();
    auto mine = makeSessionHello(identity, ephemeral.publicKey(), pair);
    for (const auto& envelope : takeEnvelopes()) {
        if (envelope.kind != EnvelopeKind::keyExchange) continue;
        auto theirs = decode<SessionHello>(envelope.ciphertext).value();
        channel_ = SecureChannel::create(identity.pairKey(*mac_).value(), ephemeral, theirs.ephemeral,
                                         {pair, identity.deviceID(), mac_->deviceID, DeviceRole::phone})
                       .value();
    }
    vyzaduj(channel_.has_value(), "the computer sent no hello");
    deliver({RelayMessage::Forward{keyExchange(pair, identity.deviceID(), mac_->deviceID, "session",
                                               toBytes(encode(mine)), clock_.now(), random_.uuid())}});
}

void ScriptedPhone::pong() {
    if (socket_) socket_->pong();
}

void ScriptedPhone::deliver(RelayMessage message) {
    socket_->deliver(encode(message));
}

Envelope ScriptedPhone::seal(const MacPayload& payload, std::string requestID) {
    return channel_
        ->seal(asBytes(encode(payload)), std::move(requestID), EnvelopeKind::data, envelopeLifetime,
               {clock_.now(), random_.uuid()})
        .value();
}

void ScriptedPhone::send(MacPayload payload, std::string requestID) {
    deliver({RelayMessage::Forward{seal(payload, std::move(requestID))}});
}

void ScriptedPhone::call(std::string tool, std::string argumentsJSON, std::string requestID) {
    send({MacPayload::ToolCall{std::move(tool), std::move(argumentsJSON)}}, std::move(requestID));
}

std::vector<ScriptedPhone::Received> ScriptedPhone::take() {
    std::vector<Received> received;
    for (const auto& envelope : takeEnvelopes())
        if (envelope.kind == EnvelopeKind::data)
            received.push_back({decode<MacPayload>(channel_->open(envelope, clock_.now()).value()).value(),
                                envelope.requestID});
    return received;
}

std::vector<Envelope> ScriptedPhone::takeEnvelopes() {
    std::vector<Envelope> envelopes;
    for (; taken_ < socket_->sent.size(); ++taken_) {
        auto message = decode<RelayMessage>(socket_->sent[taken_]).value();
        if (auto* forward = message.as<RelayMessage::Forward>()) envelopes.push_back(forward->envelope);
    }
    return envelopes;
}

} // namespace morvex
