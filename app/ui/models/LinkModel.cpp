#include "app/ui/models/LinkModel.h"

#include "app/companion/CompanionState.h"
#include "app/companion/PairingFlow.h"
#include "app/ui/Localized.h"

namespace morvex {

LinkModel::LinkModel(Companion& companion, Clock& clock, TaskScope& scope)
    : companion_(companion), state_(companion.stav()), clock_(clock), scope_(scope) {
    watch(state_.dostupnost);
    watch(state_.relayAdresa);
    watch(state_.protejsek);
    watch(state_.potiz);
    watch(state_.vaultTrouble);
    watch(state_.keys);
    watch(state_.areKeysInFiles);
    watch(state_.nextAttempt);
    attemptNotifier_ = state_.nextAttempt.addNotifier([this] { countSeconds(); });
    sleepNotifier_ = state_.dostupnost.addNotifier([this] { countMinutes(); });
}

QString LinkModel::availability() const {
    return localized(state_.linkText(clock_.now()));
}

QString LinkModel::symbol() const {
    return pictureName(state_.areKeysLoading() ? AvailabilitySymbol::connecting
                                               : availabilitySymbol(state_.dostupnost));
}

bool LinkModel::usable() const {
    return state_.dostupnost.value().jePouzitelny();
}

bool LinkModel::needsAttention() const {
    return !state_.areKeysLoading() && availabilitySymbol(state_.dostupnost) == AvailabilitySymbol::attention;
}

QString LinkModel::relay() const {
    const auto& peer = state_.protejsek.value();
    return QString::fromStdString(peer ? peer->relayURL : state_.relayAdresa.value());
}

QString LinkModel::nextAttempt() const {
    const auto left = untilNextAttempt();
    return left > Clock::Duration::zero() ? localized(nextAttemptText(left)) : QString();
}

void LinkModel::tryNow() {
    companion_.connectNow();
}

QString LinkModel::placeOfKeys() const {
    return state_.areKeysInFiles.value() ? localized(keysInFiles) : QString();
}

QString LinkModel::trouble() const {
    QStringList troubles;
    if (const auto& potiz = state_.vaultTrouble.value()) troubles << localized(*potiz);
    // The pairing card reports problems with the keys, together with what can be done.
    const bool isOfTheKeys = state_.keys.value().kind == KeysState::Case::missing;
    if (const auto& potiz = state_.potiz.value(); potiz && !isOfTheKeys) troubles << localized(*potiz);
    return troubles.join(QChar(u'\n'));
}

void LinkModel::countMinutes() {
    if (counting_ || !state_.dostupnost.value().as<MacAvailability::Spanek>()) return;
    counting_ = true;
    scope_.spawn(refreshEachMinute());
}

Task<void> LinkModel::refreshEachMinute() {
    auto stop = scope_.token();
    while (state_.dostupnost.value().as<MacAvailability::Spanek>() &&
           co_await sleepFor(clock_, std::chrono::minutes(1), stop))
        refresh();
    counting_ = false;
}

Clock::Duration LinkModel::untilNextAttempt() const {
    const auto& when = state_.nextAttempt.value();
    return when ? *when - clock_.sinceBoot() : Clock::Duration::zero();
}

void LinkModel::countSeconds() {
    if (countingSeconds_ || untilNextAttempt() <= Clock::Duration::zero()) return;
    countingSeconds_ = true;
    scope_.spawn(refreshEachSecond());
}

Task<void> LinkModel::refreshEachSecond() {
    auto stop = scope_.token();
    while (untilNextAttempt() > Clock::Duration::zero() &&
           co_await sleepFor(clock_, std::chrono::seconds(1), stop))
        refresh();
    countingSeconds_ = false;
}

} // namespace morvex
