#include "app/ui/models/PairingModel.h"

#include "app/companion/CompanionState.h"
#include "app/companion/PairingFlow.h"
#include "app/ui/Localized.h"
#include "app/ui/ShortDate.h"

namespace morvex {

PairingModel::PairingModel(Companion& companion, Services services)
    : companion_(companion), services_(services) {
    auto& state = companion_.stav();
    watch(state.keys);
    watch(state.parovani);
    watch(state.protejsek);
    watch(state.phoneHasLeft);
    watch(state.relayAdresa);
    codeNotifier_ = state.parovani.addNotifier([this] { watchExpiry(); });
}

PairingModel::Situation PairingModel::situation() const {
    if (companion_.stav().areKeysLoading()) return Situation::LoadingKeys;
    if (companion_.stav().keys.value().kind == KeysState::Case::missing) return Situation::NoKeys;
    const auto& pairing = companion_.stav().parovani.value();
    if (pairing.as<StavParovani::Zakladam>()) return Situation::Creating;
    if (pairing.as<StavParovani::CekamNaTelefon>()) return Situation::ShowingCode;
    if (pairing.as<StavParovani::OverCislo>()) return Situation::Comparing;
    if (pairing.as<StavParovani::Chyba>()) return Situation::Failed;
    return hasPhone() ? Situation::Paired : Situation::NoPhone;
}

QString PairingModel::keys() const {
    return localized(companion_.stav().areKeysLoading() ? Sentence(unlockKeychain)
                                                        : companion_.stav().keys.value().duvod);
}

bool PairingModel::hasPhone() const {
    return companion_.stav().protejsek.value().has_value();
}

QString PairingModel::phone() const {
    const auto& peer = companion_.stav().protejsek.value();
    return peer ? QString::fromStdString(peer->deviceID.rawValue) : QString();
}

QString PairingModel::confirmedOn() const {
    const auto& peer = companion_.stav().protejsek.value();
    return peer ? shortDate(peer->potvrzeno) : QString();
}

QString PairingModel::code() const {
    const auto* shown = companion_.stav().parovani.value().as<StavParovani::CekamNaTelefon>();
    return shown ? QString::fromStdString(shown->qr) : QString();
}

QString PairingModel::validUntil() const {
    const auto* shown = companion_.stav().parovani.value().as<StavParovani::CekamNaTelefon>();
    return shown ? timeWithSeconds(shown->platiDo) : QString();
}

bool PairingModel::expired() const {
    const auto* shown = companion_.stav().parovani.value().as<StavParovani::CekamNaTelefon>();
    return shown && shown->platiDo <= services_.clock.now();
}

QString PairingModel::number() const {
    const auto* compared = companion_.stav().parovani.value().as<StavParovani::OverCislo>();
    return compared ? QString::fromStdString(compared->cislo) : QString();
}

QString PairingModel::phoneLeft() const {
    return companion_.stav().phoneHasLeft.value() ? localized(phoneLeftMeanwhile) : QString();
}

QString PairingModel::failure() const {
    const auto* failed = companion_.stav().parovani.value().as<StavParovani::Chyba>();
    return failed ? localized(failed->text) : QString();
}

QString PairingModel::relayAddress() const {
    return QString::fromStdString(companion_.stav().relayAdresa.value());
}

void PairingModel::setRelayAddress(const QString& address) {
    const auto chosen = companion_.chooseRelay(address.toStdString());
    relayProblem_ = chosen ? Sentence() : chosen.error().popis();
    refresh();
}

QString PairingModel::relayProblem() const {
    return localized(relayProblem_);
}

bool PairingModel::relayIsLocal() const {
    const auto address = RelayAddress::parse(relayAddress().toStdString());
    return address && address->isThisComputer();
}

void PairingModel::loadKeys() {
    companion_.tryAgain();
}

void PairingModel::start() {
    companion_.parovani().zacitParovani();
}

void PairingModel::cancel() {
    companion_.parovani().zrusitParovani();
}

void PairingModel::confirm(const QString& number) {
    companion_.parovani().potvrditCislo(number.toStdString());
}

void PairingModel::refuse() {
    companion_.parovani().odmitnoutCislo();
}

void PairingModel::unpair() {
    companion_.parovani().odvolat();
}

void PairingModel::copyCode() {
    if (!code().isEmpty()) services_.clipboard.setText(code().toStdString());
}

void PairingModel::watchExpiry() {
    const auto* shown = companion_.stav().parovani.value().as<StavParovani::CekamNaTelefon>();
    if (shown) services_.scope.spawn(refreshAt(shown->platiDo));
}

Task<void> PairingModel::refreshAt(Date expiry) {
    auto stop = services_.scope.token();
    auto left = expiry - services_.clock.now();
    if (co_await sleepFor(services_.clock, left, stop)) refresh();
}

} // namespace morvex
