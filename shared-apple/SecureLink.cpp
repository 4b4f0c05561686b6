#include "shared-apple/SecureLink.h"

#include "foundation/EitherStop.h"
#include "shared/base/Try.h"
#include "shared/trust/SessionHandshake.h"
#include "shared/wire/Json.h"
#include "shared/wire/SessionHello.h"
#include "shared/wire/TalkSpanError.h"

#include <utility>

namespace morvex {

namespace {

const std::string sessionRequestID = "session";

/// Far more hellos than an honest peer sends before this device changes its key.
constexpr std::size_t mostPeerKeys = 1024;

/// While this many bytes wait for the application, further messages of the session are left at the relay.
constexpr std::size_t mostMessages = 2 * 1024 * 1024;

/// While this many bytes wait, no event is handled. Only a series of short connections can leave so much.
constexpr std::size_t mostWaiting = 32 * 1024 * 1024;

/// The weight of an event, in bytes, in addition to its message.
constexpr std::size_t weightOfEvent = 4 * 1024;

bool isMessage(const RelayLink::Udalost& event) {
    const auto* envelope = std::get_if<RelayLink::Obalka>(&event);
    return envelope && envelope->envelope.kind == EnvelopeKind::data;
}

} // namespace

Result<std::shared_ptr<SecureLink>> SecureLink::create(std::shared_ptr<const DeviceIdentity> identita,
                                                       PairedPeer protejsek, DeviceRole role,
                                                       Services services) {
    auto address = RelayAddress::parse(protejsek.relayURL);
    if (!address) return fail(TalkSpanError{TalkSpanError::NotPaired{RelayAddress::keptOneIsUnusable}});
    return std::shared_ptr<SecureLink>(
        new SecureLink(std::move(identita), std::move(protejsek), role, *std::move(address), services));
}

SecureLink::SecureLink(std::shared_ptr<const DeviceIdentity> identita, PairedPeer protejsek, DeviceRole role,
                       RelayAddress address, Services services)
    : identita_(std::move(identita)),
      protejsek_(std::move(protejsek)),
      role_(role),
      services_(services),
      relayLink_(std::move(address), identita_, protejsek_.pairID, services.relay) {}

Task<void> SecureLink::spustit() {
    co_await hop(executor());
    if (posluchac_) co_return;
    // Events of the previous run are obsolete.
    relayLink_.udalosti().clear();
    login_.reset();
    posluchac_ = std::make_unique<TaskScope>(executor());
    posluchac_->spawn(listen(posluchac_->token()));
    co_await relayLink_.start();
}

Task<void> SecureLink::zastavit() {
    co_await hop(executor());
    auto listening = std::move(posluchac_);
    if (listening) listening->stop();
    kanal_.reset();
    mujEfemerni_.reset();
    co_await relayLink_.stop();
    if (listening) co_await listening->join();
}

Task<Result<void>> SecureLink::poslat(MacPayload payload, std::string requestID) {
    co_await hop(executor());
    // While the application is busy, the link may have a new connection whose events were not handled yet.
    if (!kanal_ || !relayLink_.isCurrent(login_)) co_return fail(TalkSpanError{TalkSpanError::MacOffline{}});
    // There is no suspension between drawing the counter and queuing the frame, so counters are sent in
    // order.
    CO_TRY(auto, envelope,
           kanal_->seal(asBytes(encode(payload)), std::move(requestID), EnvelopeKind::data, envelopeLifetime,
                        {now(), services_.random.uuid()}));
    co_return co_await relayLink_.send(std::move(envelope), login_);
}

Task<void> SecureLink::listen(std::stop_token stop) {
    while (auto event = co_await relayLink_.udalosti().next(stop)) {
        co_await roomFor(*event, stop);
        if (stop.stop_requested()) co_return;
        // Any event about the connection ends the session that was made on it.
        if (!std::holds_alternative<RelayLink::Obalka>(*event)) kanal_.reset();
        Task<void> handling = std::visit([this](auto& held) { return handle(std::move(held)); }, *event);
        co_await std::move(handling);
    }
}

Task<void> SecureLink::roomFor(const RelayLink::Udalost& event, std::stop_token stop) {
    if (isMessage(event) && login_) {
        const EitherStop rush(stop, login_->over);
        co_await udalosti_.room(mostMessages, rush.token());
    }
    co_await udalosti_.room(mostWaiting, stop);
}

Task<void> SecureLink::handle(RelayLink::Pripojuji event) {
    tell({MacAvailability::Pripojuji{event.pokus, event.zat}});
    co_return;
}

Task<void> SecureLink::handle(RelayLink::Prihlaseno event) {
    login_ = std::move(event.login);
    drawKey();
    tell({MacAvailability::Offline{}});
    if (event.protejsekOnline) co_await sendHello();
}

Task<void> SecureLink::handle(RelayLink::Protejsek event) {
    if (event.online) {
        drawKey();
        co_await sendHello();
    } else {
        mujEfemerni_.reset();
        tell({MacAvailability::Offline{}});
    }
}

Task<void> SecureLink::handle(RelayLink::Obalka event) {
    const auto& envelope = event.envelope;
    if (envelope.kind == EnvelopeKind::keyExchange) co_return acceptHello(envelope);
    if (!kanal_)
        co_return tellError("Zpráva dorazila dřív, než bylo spojení zabezpečené. Zopakuj to."_sentence);
    const auto plaintext = kanal_->open(envelope, now());
    if (!plaintext) {
        auto* refused = plaintext.error().as<SecureChannel::Chyba>();
        // A repeat is normal and concerns nobody.
        if (refused && refused->duvod == SecureChannel::Chyba::Duvod::prehrani) co_return;
        co_return tellError("Zprávu nejde ověřit: {duvod}"_sentence(plaintext.error().popis()));
    }
    auto payload = decode<MacPayload>(*plaintext, messageLimits);
    if (!payload) co_return tellError("Zprávu nejde ověřit: {duvod}"_sentence(payload.error().popis()));
    udalosti_.push(Zprava{*std::move(payload), envelope.requestID},
                   weightOfEvent + plaintext->size() + envelope.requestID.size());
}

Task<void> SecureLink::handle(RelayLink::Selhalo event) {
    if (event.code == RelayFailure::peerOffline)
        tell({MacAvailability::Offline{}});
    else if (event.code == RelayFailure::revoked)
        tell({MacAvailability::NeplatneParovani{"Zařízení bylo odvoláno."_sentence}});
    else
        tellError(Sentence(event.detail));
    co_return;
}

Task<void> SecureLink::handle(RelayLink::Odpojeno event) {
    tell({MacAvailability::Preruseno{event.duvod}});
    co_return;
}

Task<void> SecureLink::sendHello() {
    if (!mujEfemerni_) co_return;
    auto hello = makeSessionHello(*identita_, mujEfemerni_->publicKey(), protejsek_.pairID);
    // A lost hello is sent again after the next login or when the peer returns.
    (void)co_await relayLink_.send(keyExchange(protejsek_.pairID, identita_->deviceID(), protejsek_.deviceID,
                                               sessionRequestID, toBytes(encode(hello)), now(),
                                               services_.random.uuid()),
                                   login_);
}

void SecureLink::acceptHello(const Envelope& envelope) {
    if (!mujEfemerni_) return;
    auto hello = decode<SessionHello>(envelope.ciphertext, messageLimits);
    if (!hello) return tellError("Protějšek poslal představení, kterému nerozumím."_sentence);
    if (!checkSessionHello(*hello, protejsek_.pairID, protejsek_.podpisovyKlic)) {
        kanal_.reset();
        return tellError("Představení protějšku má neplatný podpis. Spojení nešifruju."_sentence);
    }
    if (!isNewKey(hello->ephemeral)) return;
    auto channel = channelWith(hello->ephemeral);
    if (!channel) {
        kanal_.reset();
        return tellError("Klíč pro spojení nejde odvodit: {duvod}"_sentence(channel.error().popis()));
    }
    kanal_ = *std::move(channel);
    tell({MacAvailability::Pripraveny{}});
    udalosti_.push(Pripraveno{}, weightOfEvent);
}

bool SecureLink::isNewKey(const AgreementPublicKey& peerEphemeral) {
    if (usedPeerKeys_.size() >= mostPeerKeys) return false;
    return usedPeerKeys_.insert(peerEphemeral).second;
}

Result<SecureChannel> SecureLink::channelWith(const AgreementPublicKey& peerEphemeral) const {
    TRY(const auto, pairKey, identita_->pairKey(protejsek_));
    return SecureChannel::create(pairKey, *mujEfemerni_, peerEphemeral,
                                 {protejsek_.pairID, identita_->deviceID(), protejsek_.deviceID, role_});
}

void SecureLink::drawKey() {
    mujEfemerni_ = EphemeralPrivateKey::generate();
    usedPeerKeys_.clear();
}

void SecureLink::tell(MacAvailability stav) {
    udalosti_.push(Stav{std::move(stav)}, weightOfEvent);
}

void SecureLink::tellError(Sentence text) {
    udalosti_.push(Chyba{std::move(text)}, weightOfEvent);
}

} // namespace morvex
