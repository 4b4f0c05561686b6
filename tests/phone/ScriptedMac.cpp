#include "tests/phone/ScriptedMac.h"

#include "shared/base/Require.h"
#include "shared/trust/SessionHandshake.h"
#include "shared/wire/Json.h"
#include "shared/wire/SessionHello.h"

#include <utility>

namespace morvex {

PairedPeer ScriptedMac::asPeer() const {
    return {pair,
            relayURL,
            identity.deviceID(),
            identity.signingKey(),
            identity.agreementKey(),
            DeviceRole::mac,
            dateFromSeconds(1'700'000'000)};
}

PairingBundle ScriptedMac::bundle() const {
    return {ProtocolVersion::current, relayURL, pair, "token", identity.signingKey(),
            identity.agreementKey()};
}

void ScriptedMac::attach(std::shared_ptr<ScriptedSocket> socket, const DeviceIdentity& phone) {
    socket_ = std::move(socket);
    taken_ = 0;
    received_.clear();
    milestones_.clear();
    channel_.reset();
    phone_ = PairedPeer{
        pair, "", phone.deviceID(), phone.signingKey(), phone.agreementKey(), DeviceRole::phone, {}};
}

void ScriptedMac::logIn(bool macIsOnline) {
    deliver({RelayMessage::Challenge{toBytes("nonce"), ProtocolVersion::current}});
    deliver({RelayMessage::Authenticated{macIsOnline}});
}

void ScriptedMac::exchangeHellos() {
    auto ephemeral = EphemeralPrivateKey::generate();
    auto mine = makeSessionHello(identity, ephemeral.publicKey(), pair);
    for (const auto& envelope : takeEnvelopes()) {
        if (envelope.kind != EnvelopeKind::keyExchange) continue;
        auto theirs = decode<SessionHello>(envelope.ciphertext).value();
        channel_ = SecureChannel::create(identity.pairKey(*phone_).value(), ephemeral, theirs.ephemeral,
                                         {pair, identity.deviceID(), phone_->deviceID, DeviceRole::mac})
                       .value();
    }
    vyzaduj(channel_.has_value(), "the phone sent no hello");
    deliver({RelayMessage::Forward{keyExchange(pair, identity.deviceID(), phone_->deviceID, "session",
                                               toBytes(encode(mine)), clock_.now(), random_.uuid())}});
}

void ScriptedMac::deliver(RelayMessage message) {
    socket_->deliver(encode(message));
}

void ScriptedMac::send(MacPayload payload, std::string requestID) {
    auto envelope = channel_->seal(asBytes(encode(payload)), std::move(requestID), EnvelopeKind::data,
                                   envelopeLifetime, {clock_.now(), random_.uuid()});
    deliver({RelayMessage::Forward{std::move(envelope).value()}});
}

std::vector<ScriptedMac::Received> ScriptedMac::take() {
    receive();
    return std::exchange(received_, {});
}

const std::vector<std::string>& ScriptedMac::milestones() {
    receive();
    return milestones_;
}

std::size_t ScriptedMac::reachMilestones() {
    receive();
    const auto reached = std::exchange(milestones_, {});
    for (const auto& requestID : reached) send({MacPayload::ToolResult{true, "{}"}}, requestID);
    return reached.size();
}

void ScriptedMac::receive() {
    for (const auto& envelope : takeEnvelopes()) {
        if (envelope.kind != EnvelopeKind::data) continue;
        auto payload = decode<MacPayload>(channel_->open(envelope, clock_.now()).value()).value();
        if (envelope.requestID.starts_with("milestone:"))
            milestones_.push_back(envelope.requestID);
        else
            received_.push_back({std::move(payload), envelope.requestID});
    }
}

std::vector<Envelope> ScriptedMac::takeEnvelopes() {
    std::vector<Envelope> envelopes;
    for (; taken_ < socket_->sent.size(); ++taken_) {
        auto message = decode<RelayMessage>(socket_->sent[taken_]).value();
        if (auto* forward = message.as<RelayMessage::Forward>()) envelopes.push_back(forward->envelope);
    }
    return envelopes;
}

} // namespace morvex
