#include "app/companion/PairingFlow.h"

#include "shared/trust/Parovani.h"
#include "shared/wire/Json.h"
#include "shared/wire/PairingBundle.h"
#include "shared/wire/PairingHello.h"

#include <utility>

namespace morvex {

namespace {

Task<void> start(std::shared_ptr<RelayLink> link) {
    co_await link->start();
}

Task<void> tryNow(std::shared_ptr<RelayLink> link) {
    co_await link->tryNow();
}

Task<void> takeDown(std::shared_ptr<RelayLink> link, std::unique_ptr<TaskScope> listener) {
    co_await link->stop();
    co_await listener->join();
}

} // namespace

PairingFlow::PairingFlow(Services services, CompanionState& state, Link link)
    : services_(services),
      state_(state),
      link_(std::move(link)),
      relay_(services.http, services.relay.clock) {}

void PairingFlow::zacitParovani() {
    if (isEnding_) return;
    ++generation_;
    awaitsKeys_ = !services_.keys.arePresent();
    if (awaitsKeys_) {
        // The failure of an earlier attempt must not stay on screen.
        state_.parovani = StavParovani{};
        return services_.scope.spawn(loadAndBegin(generation_));
    }
    auto address = RelayAddress::parse(state_.relayAdresa.value());
    if (!address) return failWith(RelayAddress::nonsense);
    state_.phoneHasLeft = false;
    state_.parovani = StavParovani{StavParovani::Zakladam{}};
    services_.scope.spawn(zalozit(*std::move(address), generation_));
}

Task<void> PairingFlow::loadAndBegin(std::uint64_t generation) {
    auto loaded = co_await services_.keys.load();
    if (isEnding_ || generation != generation_) co_return;
    awaitsKeys_ = false;
    if (!loaded) co_return failWith(loaded.error().popis());
    state_.parovani = StavParovani{};
    // Loading may have found a phone that is already paired.
    if (services_.keys.arePresent() && !state_.protejsek.value()) zacitParovani();
}

Task<void> PairingFlow::zalozit(RelayAddress address, std::uint64_t generation) {
    auto zalozeni = co_await relay_.zalozit(address, identita(), DeviceRole::mac);
    if (isEnding_ || generation != generation_) co_return;
    if (!zalozeni) co_return failWith(zalozeni.error().popis());
    PairingBundle bundle{ProtocolVersion::current, address.text(),           zalozeni->pairID,
                         zalozeni->pairingToken,   identita()->signingKey(), identita()->agreementKey()};
    state_.parovani = StavParovani{StavParovani::CekamNaTelefon{Parovani::qrText(bundle), zalozeni->platiDo}};
    link_.odpojit();
    listenFor(address, zalozeni->pairID);
}

void PairingFlow::listenFor(const RelayAddress& address, const PairID& pair) {
    zastavit();
    parovaci_ = std::make_shared<RelayLink>(address, identita(), pair, services_.relay);
    parovaciPosluchac_ = std::make_unique<TaskScope>(services_.main);
    parovaciPosluchac_->spawn(listen(parovaci_, address.text(), pair, parovaciPosluchac_->token()));
    services_.scope.spawn(start(parovaci_));
}

Task<void> PairingFlow::listen(std::shared_ptr<RelayLink> link, std::string relayURL, PairID pair,
                               std::stop_token stop) {
    while (auto event = co_await link->udalosti().next(stop)) {
        follow(*event);
        auto* obalka = std::get_if<RelayLink::Obalka>(&*event);
        if (!obalka) continue;
        const auto& envelope = obalka->envelope;
        if (envelope.kind == EnvelopeKind::keyExchange && envelope.requestID == Parovani::requestID &&
            envelope.pair == pair && envelope.to == identita()->deviceID())
            prijmout(envelope, relayURL);
    }
}

void PairingFlow::follow(const RelayLink::Udalost& event) {
    if (!rozdelany_) return;
    if (const auto* presence = std::get_if<RelayLink::Protejsek>(&event))
        state_.phoneHasLeft = !presence->online;
    if (const auto* login = std::get_if<RelayLink::Prihlaseno>(&event))
        state_.phoneHasLeft = !login->protejsekOnline;
}

void PairingFlow::prijmout(const Envelope& envelope, const std::string& relayURL) {
    auto hello = decode<PairingHello>(envelope.ciphertext, messageLimits);
    if (!hello)
        return failWith(
            "Telefon poslal nekompatibilní párovací zprávu: {duvod}"_sentence(hello.error().popis()));
    if (!Parovani::checkHello(*hello, envelope.pair))
        return failWith("Představení telefonu má neplatný podpis. Nic jsem neuložil."_sentence);
    PairedPeer peer{envelope.pair,
                    relayURL,
                    hello->device,
                    hello->signingKey,
                    hello->agreementKey,
                    DeviceRole::phone,
                    services_.relay.clock.now()};
    auto pairKey = identita()->pairKey(peer);
    if (!pairKey) return failWith("Klíč telefonu nejde použít: {duvod}"_sentence(pairKey.error().popis()));
    rozdelany_ = std::move(peer);
    state_.phoneHasLeft = false;
    state_.parovani = StavParovani{StavParovani::OverCislo{Parovani::comparisonNumber(*pairKey)}};
}

void PairingFlow::potvrditCislo(const std::string& cislo) {
    const auto* shown = state_.parovani.value().as<StavParovani::OverCislo>();
    if (!rozdelany_ || !shown || shown->cislo != cislo || pairingBeingSaved_ == generation_) return;
    pairingBeingSaved_ = generation_;
    services_.scope.spawn(ulozit(*rozdelany_, generation_));
}

Task<void> PairingFlow::ulozit(PairedPeer peer, std::uint64_t generation) {
    auto saved = co_await services_.keys.ulozit(peer);
    if (pairingBeingSaved_ == generation) pairingBeingSaved_.reset();
    // Meanwhile the user has refused, cancelled or started the pairing anew.
    if (generation != generation_) co_return co_await services_.keys.putBack(std::move(peer));
    const auto notSaved =
        saved ? std::nullopt
              : std::optional("Párování se nepodařilo uložit: {duvod}"_sentence(saved.error().popis()));
    // At the end of the program the confirmed phone stays stored; nobody sees the state of the pairing.
    if (isEnding_ && notSaved) state_.vaultTrouble = notSaved;
    if (isEnding_) co_return;
    if (notSaved) co_return failWith(*notSaved);
    ++generation_;
    if (const auto& before = state_.protejsek.value(); before && before->deviceID != peer.deviceID)
        link_.abandon();
    state_.protejsek = peer;
    rozdelany_.reset();
    state_.parovani = StavParovani{};
    zastavit();
    link_.pripojit();
}

void PairingFlow::odmitnoutCislo() {
    ++generation_;
    rozdelany_.reset();
    state_.phoneHasLeft = false;
    zastavit();
    failWith("Čísla se neshodovala. Párování jsem zrušil a nic neuložil. Zkus to znovu; "
             "pokud se to bude opakovat, někdo poslouchá."_sentence);
}

void PairingFlow::zrusitParovani() {
    ++generation_;
    awaitsKeys_ = false;
    state_.parovani = StavParovani{};
    rozdelany_.reset();
    state_.phoneHasLeft = false;
    zastavit();
    if (state_.protejsek.value()) link_.pripojit();
}

void PairingFlow::odvolat() {
    // Nothing that would begin now is carried out any more.
    if (isEnding_) return;
    const auto protejsek = state_.protejsek.value();
    auto address = protejsek ? RelayAddress::parse(protejsek->relayURL) : std::nullopt;
    if (!identita() || !protejsek) return;
    if (!address) return failWith(RelayAddress::keptOneIsUnusable);
    link_.abandon();
    state_.dostupnost = MacAvailability{MacAvailability::Nesparovano{}};
    state_.phoneHasLeft = false;
    // Problems with the phone that was disconnected no longer matter.
    state_.potiz = std::nullopt;
    services_.scope.spawn(forgetPhone(*std::move(address), *protejsek));
}

Task<void> PairingFlow::forgetPhone(RelayAddress address, PairedPeer protejsek) {
    // Both may fail, and another phone may be paired while they run.
    (void)co_await relay_.odvolat(std::move(address), protejsek.pairID, protejsek.deviceID, identita());
    co_await services_.keys.forgetPhone(std::move(protejsek));
}

void PairingFlow::connectNow() {
    if (parovaci_) services_.scope.spawn(tryNow(parovaci_));
}

void PairingFlow::shutDown() {
    isEnding_ = true;
    zastavit();
}

void PairingFlow::zastavit() {
    if (!parovaci_) return;
    parovaciPosluchac_->stop();
    services_.scope.spawn(takeDown(std::exchange(parovaci_, nullptr), std::move(parovaciPosluchac_)));
}

void PairingFlow::failWith(Sentence text) {
    state_.parovani = StavParovani{StavParovani::Chyba{std::move(text)}};
}

} // namespace morvex
