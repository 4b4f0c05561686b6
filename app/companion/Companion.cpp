#include "app/companion/Companion.h"

#include "app/agents/AgentId.h"
#include "app/companion/SmazatPar.h"
#include "shared-apple/KeychainChyba.h"
#include "shared-apple/MessageTooLong.h"
#include "shared-apple/OwnIdentity.h"
#include "shared/base/Try.h"
#include "shared/wire/MacToolName.h"

#include <utility>

namespace morvex {

namespace {

/// One change of the network is told a dozen times, and only the last of them makes it usable.
constexpr std::chrono::seconds networkSettles{1};

const std::string statusRequestID = "status";
const std::string relayAddressKey = "relay.adresa";
const std::string defaultRelayAddress = "http://127.0.0.1:8787";

bool jeZamceno(const Error& error) {
    const auto* refusal = error.as<KeychainChyba>();
    return refusal && refusal->jeZamceno();
}

Clock::Duration wait(const MacAvailability::Pripojuji& pripojuji) {
    return std::chrono::duration_cast<Clock::Duration>(std::chrono::duration<double>(pripojuji.dalsiZa));
}

} // namespace

Companion::Companion(CompanionServices services)
    : services_(std::move(services)),
      scope_(services_.main),
      slozky_(
          Slozky::create(services_.defaults, services_.bookmarks, services_.folderPicker, services_.folders)),
      schvalovani_(clock(), random(), scope_),
      bdelost_({services_.power, services_.sleep, services_.inhibitor, services_.loginItem,
                services_.defaults, clock(), scope_}),
      poznamky_(services_.folders.applicationSupport(), saving(), random()),
      souhrny_(services_.folders.applicationSupport(), saving()),
      keychain_(services_.vault, services_.vaultThread),
      customApps_(services_.defaults, keychain_, random()),
      historieAgentu_(HistorieAgentu::create(services_.folders.applicationSupport(),
                                             {saving(), random(), services_.opener})),
      integrations_(services_.defaults),
      hlas_(services_.defaults, keychain_),
      notesTools_(poznamky_),
      fileTools_(*slozky_, services_.workers, {clock(), WriteAllowance::usual}, scope_.token()),
      programs_(services_.processes, clock(), services_.workers,
                {services_.environment, services_.folders.accountHome()}, scope_.token()),
      terminalTools_(*slozky_, {services_.processes, clock(), programs_, services_.workers}, scope_.token()),
      agenti_({services_.processes, clock(), programs_, services_.main, services_.workers}, scope_.token()),
      nastroje_(table_, state_, schvalovani_, random()),
      report_{state_,
              integrations_,
              *slozky_,
              agenti_,
              bdelost_.stav().naNapajeni,
              services_.verzeAplikace,
              services_.jmenoZarizeni},
      phoneLink_(services_.main, scope_,
                 [this](SecureLink::Udalost udalost) { return zpracovat(std::move(udalost)); }),
      poznamkyTelefonu_(poznamky_, souhrny_, phoneLink_, state_, services_.main, scope_),
      ukolyTelefonu_(*historieAgentu_, phoneLink_, [this] { return poslatStav(); }),
      agentTools_(agenti_, *historieAgentu_, ukolyTelefonu_,
                  {[this] { return slozky_->aliasy(); },
                   [this](const std::optional<std::string>& alias) { return slozky_->slozkaProAlias(alias); },
                   [this](const std::string& cesta) { return slozky_->jePovolena(cesta); }},
                  scope_),
      dorucene_({nastroje_, schvalovani_, ukolyTelefonu_, poznamkyTelefonu_, phoneLink_, hlas_, customApps_,
                 [this] { return poslatStav(); }}),
      parovani_({services_.main, services_.vaultThread, services_.link.relay, services_.http,
                 services_.uloziste, scope_},
                state_,
                {[this] { pripojit(); }, [this] { odpojit(); }, [this] { opustitTelefon(); },
                 [this] { return nacistKlice(); }}) {
    state_.relayAdresa = services_.defaults.text(relayAddressKey).value_or(defaultRelayAddress);
    state_.potizNastaveni = services_.defaults.problem();
    connections_.push_back(
        services_.defaults.onProblem([this] { state_.potizNastaveni = services_.defaults.problem(); }));
    addTools();
    installCallbacks();
}

Companion::~Companion() {
    services_.network.unwatch();
}

void Companion::addTools() {
    table_.add(
        MacToolName::status, [] { return true; },
        [this](ToolCall call) { return stavNastroj(std::move(call)); });
    notesTools_.addTo(table_, [this] { return integrations_.isOn(Integration::notes); });
    addAgentTools();
    fileTools_.addTo(table_, [this] { return integrations_.isOn(Integration::files); });
    terminalTools_.addTo(table_, [this] { return integrations_.isOn(Integration::terminal); });
}

void Companion::addAgentTools() {
    auto isUsable = [this](Integration integration, const QProperty<AgentStatus>& stav) {
        return
            [this, integration, &stav] { return integrations_.isOn(integration) && stav.value().installed; };
    };
    agentTools_.addTo(table_, {.codex = isUsable(Integration::codex, state_.stavCodexu),
                               .claude = isUsable(Integration::claude, state_.stavClauda),
                               .rename = [this] {
                                   return integrations_.isOn(Integration::codex) ||
                                          integrations_.isOn(Integration::claude);
                               }});
}

void Companion::installCallbacks() {
    auto sendStatus = [this] { scope_.spawn(poslatStav()); };
    customApps_.setActive(integrations_.isOn(Integration::customApps));
    connections_.push_back(customApps_.priZmene(sendStatus));
    connections_.push_back(integrations_.onChange([this, sendStatus] {
        customApps_.setActive(integrations_.isOn(Integration::customApps));
        sendStatus();
    }));
    connections_.push_back(slozky_->priZmene(sendStatus));
    schvalovani_.poslatNaTelefon = [this](ApprovalRequest zadost) {
        if (phoneLink_.jePritomne()) scope_.spawn(poslatZadost(std::move(zadost)));
    };
    bdelost_.naUsnuti = [this] { usnout(); };
    bdelost_.naProbuzeni = [this] { pripojit(); };
    services_.network.watch([this] {
        if (!std::exchange(sitSeMeni_, true)) scope_.spawn(poZmeneSite());
    });
}

Task<void> Companion::spustit() {
    (void)co_await nacistKlice();
}

void Companion::zkusitZnovu() {
    if (state_.klice.value().pripad == StavKlicu::Pripad::jsou) return;
    services_.vault.stopAsking();
    if (!std::exchange(nactouSeZnovu_, true)) scope_.spawn(nacistZnovu());
}

Task<void> Companion::nacistZnovu() {
    (void)co_await nacistKlice();
}

Task<Result<void>> Companion::nacistKlice() {
    const auto turn = co_await nacitani_.take();
    nactouSeZnovu_ = false;
    if (state_.klice.value().pripad == StavKlicu::Pripad::jsou || konci_) co_return Result<void>{};
    state_.klice = StavKlicu{};
    state_.potiz = std::nullopt;
    if (!identita_) CO_CHECK(co_await nactiIdentitu());
    co_await hlas_.nacist();
    CO_TRY(const bool, jeNacteny, co_await nactiProtejsek());
    state_.klice = StavKlicu{StavKlicu::Pripad::jsou};
    if (!jeNacteny) co_return Result<void>{};
    pripojit();
    obnovit();
    co_return Result<void>{};
}

Task<Result<void>> Companion::nactiIdentitu() {
    auto* uloziste = &services_.uloziste;
    auto loaded = co_await runOn(services_.vaultThread, [uloziste] { return ownIdentity(*uloziste); });
    if (!loaded) {
        if (!konci_) kliceNejsou(loaded.error());
        co_return fail(TextError{state_.klice.value().duvod});
    }
    identita_ = *std::move(loaded);
    state_.identifikator = identita_->deviceID().rawValue;
    parovani_.setIdentita(identita_);
    auto* vault = &services_.vault;
    state_.kliceJsouVSouborech = co_await runOn(
        services_.vaultThread, [vault] { return vault->place() == SecretVault::Place::privateFiles; });
    co_return Result<void>{};
}

Task<Result<bool>> Companion::nactiProtejsek() {
    auto* uloziste = &services_.uloziste;
    auto loaded = co_await runOn(services_.vaultThread, [uloziste] { return uloziste->nactiProtejsek(); });
    if (!loaded && jeZamceno(loaded.error())) {
        if (!konci_) kliceNejsou(loaded.error());
        co_return fail(TextError{state_.klice.value().duvod});
    }
    if (!loaded) {
        neplatne(loaded.error());
        co_return false;
    }
    state_.protejsek = *std::move(loaded);
    if (!state_.protejsek.value()) state_.dostupnost = MacAvailability{MacAvailability::Nesparovano{}};
    co_return true;
}

void Companion::neplatne(const Error& error) {
    state_.dostupnost = MacAvailability{MacAvailability::NeplatneParovani{error.popis()}};
    state_.potiz = error.popis();
}

void Companion::kliceNejsou(const Error& error) {
    if (jeZamceno(error)) {
        state_.dostupnost = MacAvailability{MacAvailability::Preruseno{klicenkaZamcena}};
        state_.potiz = klicenkaZamcenaCele;
    } else {
        neplatne(error);
    }
    state_.klice = StavKlicu{StavKlicu::Pripad::nejsou, *state_.potiz.value()};
}

Task<void> Companion::ukoncit() {
    konci_ = true;
    services_.vault.end();
    parovani_.ukoncit();
    slozky_->ukoncit();
    odpojit();
    scope_.stop();
    co_await scope_.join();
    // Nothing new comes any more, so this is a save or two of each store.
    co_await poznamkyTelefonu_.vyrizeno();
    co_await poznamky_.ulozeno();
    co_await souhrny_.ulozeno();
    co_await historieAgentu_->ulozeno();
    co_await phoneLink_.odpojeno();
}

void Companion::pripojit() {
    const auto& protejsek = state_.protejsek.value();
    if (konci_ || !identita_ || !protejsek) return;
    odpojit();
    auto link = SecureLink::create(identita_, *protejsek, DeviceRole::mac, services_.link);
    if (link)
        phoneLink_.pripojit(*std::move(link));
    else
        neplatne(link.error());
}

void Companion::odpojit() {
    phoneLink_.odpojit();
    state_.dalsiPokus = std::nullopt;
}

void Companion::zkusitHned() {
    state_.dalsiPokus = std::nullopt;
    phoneLink_.zkusitHned();
    parovani_.zkusitHned();
}

Task<void> Companion::poZmeneSite() {
    const bool isOver = co_await sleepFor(clock(), networkSettles, scope_.token());
    sitSeMeni_ = false;
    if (isOver) zkusitHned();
}

Task<void> Companion::zpracovat(SecureLink::Udalost udalost) {
    Task<void> handling = std::visit([this](auto& held) { return zpracovat(std::move(held)); }, udalost);
    co_await std::move(handling);
}

Task<void> Companion::zpracovat(SecureLink::Stav udalost) {
    const auto* pripojuji = udalost.stav.as<MacAvailability::Pripojuji>();
    const bool ceka = pripojuji && pripojuji->dalsiZa > 0;
    state_.dalsiPokus = ceka ? std::optional(clock().sinceBoot() + wait(*pripojuji)) : std::nullopt;
    state_.dostupnost = udalost.stav;
    if (auto* preruseno = udalost.stav.as<MacAvailability::Preruseno>()) state_.potiz = preruseno->duvod;
    if (!udalost.stav.jePouzitelny()) schvalovani_.vyresit(false);
    if (udalost.stav.as<MacAvailability::NeplatneParovani>()) co_await zapomenoutNeplatny();
}

Task<void> Companion::zapomenoutNeplatny() {
    auto neplatny = state_.protejsek.value();
    if (!neplatny) co_return;
    opustitTelefon();
    // Where the vault refuses, the next start finds the peer and hears of its end again.
    auto* uloziste = &services_.uloziste;
    (void)co_await runOn(services_.vaultThread,
                         [uloziste, &neplatny] { return smazatPar(*uloziste, *neplatny); });
}

void Companion::opustitTelefon() {
    state_.protejsek = std::nullopt;
    odpojit();
    schvalovani_.vyresit(false);
    dorucene_.opustit();
}

Task<void> Companion::zpracovat(SecureLink::Zprava udalost) {
    co_await dorucene_.zpracovatZpravu(std::move(udalost.payload), std::move(udalost.requestID));
}

Task<void> Companion::zpracovat(SecureLink::Chyba udalost) {
    state_.potiz = std::move(udalost.text);
    co_return;
}

Task<void> Companion::zpracovat(SecureLink::Pripraveno) {
    const auto link = phoneLink_.soucasne();
    state_.potiz = std::nullopt;
    state_.telefonOdesel = false;
    co_await poslatStav();
    co_await doplnitPoPripojeni(link);
}

Task<void> Companion::doplnitPoPripojeni(std::shared_ptr<SecureLink> link) {
    co_await ukolyTelefonu_.doplnit(link);
    co_await poznamkyTelefonu_.doplnit(link);
}

Task<void> Companion::poslatStav() {
    const auto link = phoneLink_.soucasne();
    if (!link) co_return;
    auto status = report_.at(clock().now(), nastroje_.nabizeneNastroje());
    auto sent = co_await phoneLink_.poslat({MacPayload::Status{status}}, statusRequestID);
    if (sent || phoneLink_.soucasne() != link) co_return;
    state_.potiz = "Stav se nepodařilo odeslat: " + sent.error().popis();
    if (sent.error().as<MessageTooLong>())
        (void)co_await phoneLink_.poslat({MacPayload::Status{shortened(std::move(status))}}, statusRequestID);
}

Task<void> Companion::obnovitSluzby() {
    state_.zjistovani = state_.zjistovani + 1;
    TaskScope detections(services_.main);
    detections.spawn(zjistit(AgentId::claudeCode, &state_.stavClauda));
    detections.spawn(zjistit(AgentId::codex, &state_.stavCodexu));
    co_await detections.join();
    state_.zjistovani = state_.zjistovani - 1;
    co_await poslatStav();
}

Task<void> Companion::zjistit(std::string_view nastroj, QProperty<AgentStatus>* stav) {
    *stav = co_await agenti_.zjisti(std::string(nastroj));
}

void Companion::obnovit() {
    scope_.spawn(obnovitSluzby());
}

void Companion::usnout() {
    schvalovani_.vyresit(false);
    odpojit();
    state_.dostupnost = MacAvailability{MacAvailability::Spanek{clock().now()}};
    scope_.spawn(usnoutPoOdpojeni());
}

Task<void> Companion::usnoutPoOdpojeni() {
    co_await phoneLink_.odpojeno();
    bdelost_.muzeUsnout();
}

void Companion::setRelayAdresa(const std::string& adresa) {
    if (state_.relayAdresa.value() == adresa) return;
    state_.relayAdresa = adresa;
    services_.defaults.set(relayAddressKey, adresa);
}

Result<void> Companion::zvolitRelay(const std::string& adresa) {
    TRY(const auto, zvolena, RelayAddress::entered(adresa));
    setRelayAdresa(zvolena.text());
    return {};
}

Task<ToolOutcome> Companion::stavNastroj(ToolCall) {
    co_return ToolOutcome::done(report_.forTool(nastroje_.nabizeneNastroje()));
}

Task<void> Companion::poslatZadost(ApprovalRequest zadost) {
    auto id = zadost.id;
    (void)co_await phoneLink_.poslat({MacPayload::Approval{std::move(zadost)}}, std::move(id));
}

} // namespace morvex
