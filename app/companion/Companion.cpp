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
    parts_->state.settingsTrouble = defaults.problem();
    installCallbacks();
}

Companion::~Companion() = default;

void Companion::installCallbacks() {
    auto& parts = *parts_;
    connections_ = {
        parts.services.defaults.onProblem(
            [&parts] { parts.state.settingsTrouble = parts.services.defaults.problem(); }),
        parts.integrations.onChange([&parts] {
            for (auto* feature : parts.context.features) feature->switched();
            parts.scope.spawn(parts.status.poslatStav());
        }),
        parts.schvalovani.poslatNaTelefon([&parts](const ApprovalRequest& request) {
            if (parts.phone.isPresent()) parts.scope.spawn(sendRequest(&parts.phone, request));
        }),
        parts.bdelost.naUsnuti([this] { fallAsleep(); }),
        parts.bdelost.naProbuzeni([this] { pripojit(); }),
        parts.services.network.onChange([this] {
            if (!std::exchange(isNetworkChanging_, true)) parts_->scope.spawn(afterNetworkChange());
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

ToolGate& Companion::toolGate() {
    return parts_->gate;
}

Task<void> Companion::spustit() {
    (void)co_await parts_->keys.load();
}

void Companion::tryAgain() {
    parts_->keys.tryAgain();
}

Task<void> Companion::shutDown() {
    auto& parts = *parts_;
    isEnding_ = true;
    parts.keys.shutDown();
    parts.parovani.shutDown();
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
    if (isEnding_ || !identita || !protejsek) return;
    odpojit();
    auto link = SecureLink::create(identita, *protejsek, DeviceRole::mac, parts_->services.link);
    if (link)
        parts_->phone.pripojit(*std::move(link));
    else
        parts_->keys.declareInvalid(link.error());
}

void Companion::odpojit() {
    parts_->phone.odpojit();
    parts_->state.nextAttempt = std::nullopt;
}

void Companion::connectNow() {
    parts_->state.nextAttempt = std::nullopt;
    parts_->phone.connectNow();
    parts_->parovani.connectNow();
}

Task<void> Companion::afterNetworkChange() {
    const bool isOver = co_await sleepFor(parts_->services.clock(), networkSettles, parts_->scope.token());
    isNetworkChanging_ = false;
    if (isOver) connectNow();
}

void Companion::forgetInvalid() {
    auto invalid = parts_->state.protejsek.value();
    if (!invalid) return;
    abandonPhone();
    parts_->scope.spawn(parts_->keys.forgetPhone(*std::move(invalid)));
}

void Companion::abandonPhone() {
    parts_->state.protejsek = std::nullopt;
    odpojit();
    parts_->schvalovani.vyresit(false);
    parts_->inbox.abandon();
}

Task<void> Companion::obnovitSluzby() {
    auto& detectionsUnderWay = parts_->state.detectionsUnderWay;
    detectionsUnderWay = detectionsUnderWay + 1;
    TaskScope looks(parts_->services.main);
    for (auto* feature : parts_->context.features) looks.spawn(feature->refresh());
    co_await looks.join();
    detectionsUnderWay = detectionsUnderWay - 1;
    co_await parts_->status.poslatStav();
}

void Companion::obnovit() {
    parts_->scope.spawn(obnovitSluzby());
}

void Companion::fallAsleep() {
    parts_->schvalovani.vyresit(false);
    for (auto* feature : parts_->context.features) feature->sleep();
    odpojit();
    parts_->state.dostupnost = MacAvailability{MacAvailability::Spanek{parts_->services.clock().now()}};
    parts_->scope.spawn(fallAsleepOnceDisconnected());
}

Task<void> Companion::fallAsleepOnceDisconnected() {
    co_await parts_->phone.odpojeno();
    parts_->bdelost.allowSleep();
}

void Companion::setRelayAdresa(const std::string& adresa) {
    if (parts_->state.relayAdresa.value() == adresa) return;
    parts_->state.relayAdresa = adresa;
    parts_->services.defaults.set(relayAddressKey, adresa);
}

Result<void> Companion::chooseRelay(const std::string& adresa) {
    TRY(const auto, chosen, RelayAddress::entered(adresa));
    setRelayAdresa(chosen.text());
    return {};
}

} // namespace morvex
