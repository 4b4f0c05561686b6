#include "app/companion/Companion.h"

#include "app/companion/CompanionParts.h"
#include "foundation/TaskScope.h"
#include "shared/base/Try.h"

#include <chrono>
#include <utility>

namespace morvex {

namespace {

/// One change of the network causes about a dozen notifications, and it is usable only after the last one.
constexpr std::chrono::seconds networkSettles{1};

const std::string relayAddressKey = "relay.adresa";
const std::string defaultRelayAddress = "http://127.0.0.1:8787";

Task<void> sendRequest(PhoneLink* phone, ApprovalRequest request) {
    auto id = request.id;
    (void)co_await phone->poslat({MacPayload::Approval{std::move(request)}}, std::move(id));
}

} // namespace

Companion::Companion(CompanionServices services)
    : parts_(std::make_unique<Parts>(*this, std::move(services))) {
    auto& defaults = parts_->services.defaults;
    parts_->state.relayAdresa = defaults.text(relayAddressKey).value_or(defaultRelayAddress);
    parts_->state.potizNastaveni = defaults.problem();
    installCallbacks();
}

Companion::~Companion() = default;

void Companion::installCallbacks() {
    auto& parts = *parts_;
    connections_ = {
        parts.services.defaults.onProblem(
            [&parts] { parts.state.potizNastaveni = parts.services.defaults.problem(); }),
        parts.integrations.onChange([&parts] {
            for (auto* feature : parts.context.features) feature->switched();
            parts.scope.spawn(parts.status.poslatStav());
        }),
        parts.schvalovani.poslatNaTelefon([&parts](const ApprovalRequest& request) {
            if (parts.phone.jePritomne()) parts.scope.spawn(sendRequest(&parts.phone, request));
        }),
        parts.bdelost.naUsnuti([this] { usnout(); }),
        parts.bdelost.naProbuzeni([this] { pripojit(); }),
        parts.services.network.onChange([this] {
            if (!std::exchange(sitSeMeni_, true)) parts_->scope.spawn(poZmeneSite());
        }),
    };
}

FeatureContext& Companion::context() {
    return parts_->context;
}

CompanionState& Companion::stav() {
    return parts_->state;
}

MacIntegrationSettings& Companion::integrations() {
    return parts_->integrations;
}

Schvalovani& Companion::schvalovani() {
    return parts_->schvalovani;
}

Bdelost& Companion::bdelost() {
    return parts_->bdelost;
}

PairingFlow& Companion::parovani() {
    return parts_->parovani;
}

ToolGate& Companion::nastroje() {
    return parts_->gate;
}

Task<void> Companion::spustit() {
    (void)co_await parts_->keys.nacist();
}

void Companion::zkusitZnovu() {
    parts_->keys.zkusitZnovu();
}

Task<void> Companion::ukoncit() {
    auto& parts = *parts_;
    konci_ = true;
    parts.keys.ukoncit();
    parts.parovani.ukoncit();
    for (auto* feature : parts.context.features) feature->stop();
    odpojit();
    parts.scope.stop();
    co_await parts.scope.join();
    // No new work arrives any more, so each store saves only once or twice here.
    for (auto* feature : parts.context.features) co_await feature->saved();
    co_await parts.phone.odpojeno();
}

void Companion::pripojit() {
    const auto& identita = parts_->keys.identita();
    const auto& protejsek = parts_->state.protejsek.value();
    if (konci_ || !identita || !protejsek) return;
    odpojit();
    auto link = SecureLink::create(identita, *protejsek, DeviceRole::mac, parts_->services.link);
    if (link)
        parts_->phone.pripojit(*std::move(link));
    else
        parts_->keys.neplatne(link.error());
}

void Companion::odpojit() {
    parts_->phone.odpojit();
    parts_->state.dalsiPokus = std::nullopt;
}

void Companion::zkusitHned() {
    parts_->state.dalsiPokus = std::nullopt;
    parts_->phone.zkusitHned();
    parts_->parovani.zkusitHned();
}

Task<void> Companion::poZmeneSite() {
    const bool isOver = co_await sleepFor(parts_->services.clock(), networkSettles, parts_->scope.token());
    sitSeMeni_ = false;
    if (isOver) zkusitHned();
}

void Companion::zapomenoutNeplatny() {
    auto neplatny = parts_->state.protejsek.value();
    if (!neplatny) return;
    opustitTelefon();
    parts_->scope.spawn(parts_->keys.zapomenout(*std::move(neplatny)));
}

void Companion::opustitTelefon() {
    parts_->state.protejsek = std::nullopt;
    odpojit();
    parts_->schvalovani.vyresit(false);
    parts_->inbox.opustit();
}

Task<void> Companion::obnovitSluzby() {
    auto& zjistovani = parts_->state.zjistovani;
    zjistovani = zjistovani + 1;
    TaskScope looks(parts_->services.main);
    for (auto* feature : parts_->context.features) looks.spawn(feature->refresh());
    co_await looks.join();
    zjistovani = zjistovani - 1;
    co_await parts_->status.poslatStav();
}

void Companion::obnovit() {
    parts_->scope.spawn(obnovitSluzby());
}

void Companion::usnout() {
    parts_->schvalovani.vyresit(false);
    for (auto* feature : parts_->context.features) feature->sleep();
    odpojit();
    parts_->state.dostupnost = MacAvailability{MacAvailability::Spanek{parts_->services.clock().now()}};
    parts_->scope.spawn(usnoutPoOdpojeni());
}

Task<void> Companion::usnoutPoOdpojeni() {
    co_await parts_->phone.odpojeno();
    parts_->bdelost.muzeUsnout();
}

void Companion::setRelayAdresa(const std::string& adresa) {
    if (parts_->state.relayAdresa.value() == adresa) return;
    parts_->state.relayAdresa = adresa;
    parts_->services.defaults.set(relayAddressKey, adresa);
}

Result<void> Companion::zvolitRelay(const std::string& adresa) {
    TRY(const auto, zvolena, RelayAddress::entered(adresa));
    setRelayAdresa(zvolena.text());
    return {};
}

} // namespace morvex
