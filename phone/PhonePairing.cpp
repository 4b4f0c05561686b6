#include "phone/PhonePairing.h"

#include "phone/PhoneError.h"
#include "shared-apple/RelayParovani.h"
#include "shared/base/Try.h"
#include "shared/trust/CryptoError.h"
#include "shared/trust/Parovani.h"
#include "shared/trust/UsableSigningKey.h"
#include "shared/wire/Json.h"
#include "shared/wire/TalkSpanError.h"

#include <utility>

namespace morvex {

namespace {

Result<PairKey> pairKeyWith(const DeviceIdentity& identita, const PairingBundle& bundle) {
    if (!isUsableSigningKey(bundle.signingKey.raw)) return fail(CryptoError{CryptoFailure::refusedKey});
    return Parovani::pairKey(identita.dohodovy(), bundle.agreementKey, identita.deviceID(),
                             deviceID(bundle.signingKey));
}

} // namespace

Result<std::unique_ptr<PhonePairing>> PhonePairing::create(const std::string& qrText,
                                                           std::shared_ptr<const DeviceIdentity> identita,
                                                           SecureLink::Services services, Inbox& inbox) {
    auto bundle = Parovani::bundleOf(qrText);
    if (!bundle) return failWith(ExitCode::usage, "QR kód nejde přečíst: " + bundle.error().popis().czech());
    const auto mine = ProtocolVersion::current;
    if (!mine.isCompatible(bundle->v))
        return fail(TalkSpanError{TalkSpanError::ProtocolMismatch{mine.text(), bundle->v.text()}});
    auto address = RelayAddress::parse(bundle->relayURL);
    if (!address) return failWith(ExitCode::usage, "Adresa relaye v QR kódu nedává smysl.");
    auto key = pairKeyWith(*identita, *bundle);
    if (!key) return failWith(ExitCode::refused, "Klíč Macu nejde použít: " + key.error().popis().czech());
    return std::unique_ptr<PhonePairing>(new PhonePairing(*std::move(bundle), *std::move(address),
                                                          std::move(identita),
                                                          Parovani::comparisonNumber(*key), services, inbox));
}

PhonePairing::PhonePairing(PairingBundle bundle, RelayAddress address,
                           std::shared_ptr<const DeviceIdentity> identita, std::string number,
                           SecureLink::Services services, Inbox& inbox)
    : bundle_(std::move(bundle)),
      address_(std::move(address)),
      identita_(std::move(identita)),
      number_(std::move(number)),
      services_(services),
      inbox_(inbox),
      link_(address_, identita_, bundle_.pairID, services.relay),
      forwarding_(services.relay.executor) {}

Task<Result<void>> PhonePairing::join(HttpClient& http) {
    RelayParovani relay(http, services_.relay.clock);
    CO_TRY(auto, pair, co_await relay.pripojit(address_, bundle_.pairingToken, identita_, DeviceRole::phone));
    if (pair != bundle_.pairID)
        co_return failWith(ExitCode::relayUnreachable,
                           "Relay přiřadil telefon k jinému páru, než je v QR kódu.");
    forwarding_.spawn(inbox_.forward(link_.udalosti(), forwarding_.token()));
    co_await link_.start();
    co_return Result<void>{};
}

Task<Result<void>> PhonePairing::untilIntroduced(Clock::Duration limit) {
    const auto deadline = services_.relay.clock.sinceBoot() + limit;
    while (!isIntroduced_) {
        auto event = co_await inbox_.next(deadline);
        if (!event) co_return unreachable();
        if (auto* told = std::get_if<RelayLink::Udalost>(&*event)) CO_CHECK(co_await heard(std::move(*told)));
    }
    co_return Result<void>{};
}

Task<Result<void>> PhonePairing::heard(RelayLink::Udalost event) {
    if (const auto* told = std::get_if<RelayLink::Prihlaseno>(&event)) {
        isAtRelay_ = true;
        login_ = told->login;
        if (told->protejsekOnline) co_await introduce();
    } else if (const auto* presence = std::get_if<RelayLink::Protejsek>(&event)) {
        if (presence->online) co_await introduce();
    } else if (const auto* lost = std::get_if<RelayLink::Odpojeno>(&event)) {
        isAtRelay_ = false;
        trouble_ = lost->duvod.czech();
    } else if (const auto* failure = std::get_if<RelayLink::Selhalo>(&event)) {
        if (failure->code != RelayFailure::peerOffline) co_return fail(turnedAway(failure->detail));
    }
    co_return Result<void>{};
}

Task<void> PhonePairing::introduce() {
    auto hello = encode(Parovani::makeHello(*identita_, bundle_.pairID));
    auto sent =
        co_await link_.send(keyExchange(bundle_.pairID, identita_->deviceID(), deviceID(bundle_.signingKey),
                                        std::string(Parovani::requestID), toBytes(hello),
                                        services_.relay.clock.now(), services_.random.uuid()),
                            login_);
    if (sent) isIntroduced_ = true;
}

PairedPeer PhonePairing::mac(Date confirmed) const {
    return {bundle_.pairID,     bundle_.relayURL,     deviceID(bundle_.signingKey),
            bundle_.signingKey, bundle_.agreementKey, DeviceRole::mac,
            confirmed};
}

Task<void> PhonePairing::leave() {
    co_await link_.stop();
    forwarding_.stop();
    co_await forwarding_.join();
}

std::unexpected<Error> PhonePairing::unreachable() const {
    if (inbox_.isInterrupted()) return fail(userInterrupted());
    if (isAtRelay_)
        return failWith(ExitCode::macUnreachable, "Mac se včas neozval. Ukazuje ještě tenhle QR kód?");
    return fail(relaySilent(trouble_));
}

} // namespace morvex
