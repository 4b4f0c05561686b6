#include "app/ui/models/LinkModel.h"

#include "app/ui/Localized.h"

namespace morvex {

LinkModel::LinkModel(Companion& companion, Clock& clock, TaskScope& scope)
    : state_(companion.stav()), clock_(clock), scope_(scope) {
    watch(state_.dostupnost);
    watch(state_.relayAdresa);
    watch(state_.protejsek);
    watch(state_.potiz);
    sleepNotifier_ = state_.dostupnost.addNotifier([this] { countMinutes(); });
}

QString LinkModel::availability() const {
    return localized(state_.dostupnost.value().popis(peerName, clock_.now()));
}

QString LinkModel::symbol() const {
    return pictureName(availabilitySymbol(state_.dostupnost));
}

bool LinkModel::usable() const {
    return state_.dostupnost.value().jePouzitelny();
}

bool LinkModel::needsAttention() const {
    return availabilitySymbol(state_.dostupnost) == AvailabilitySymbol::attention;
}

QString LinkModel::relay() const {
    const auto& peer = state_.protejsek.value();
    return QString::fromStdString(peer ? peer->relayURL : state_.relayAdresa.value());
}

QString LinkModel::trouble() const {
    return localized(state_.potiz.value().value_or(std::string()));
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

} // namespace morvex
