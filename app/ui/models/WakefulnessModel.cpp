#include "app/ui/models/WakefulnessModel.h"

#include "app/ui/Localized.h"

namespace morvex {

WakefulnessModel::WakefulnessModel(Bdelost& bdelost, CompanionState& settings)
    : bdelost_(bdelost), state_(settings) {
    watch(state_.settingsTrouble);
    auto& state = bdelost_.stav();
    for (auto* property : {&state.spoustetPoPrihlaseni, &state.drzetVzhuru, &state.naNapajeni, &state.spi})
        watch(*property);
    watch(state.potiz);
    watch(state.keepAwakeTrouble);
}

bool WakefulnessModel::startsAtLogin() const {
    return bdelost_.stav().spoustetPoPrihlaseni;
}

void WakefulnessModel::setStartsAtLogin(bool starts) {
    bdelost_.setSpoustetPoPrihlaseni(starts);
    // The pressed switch must show the actual setting, even if that has not changed.
    refresh();
}

bool WakefulnessModel::staysAwake() const {
    return bdelost_.stav().drzetVzhuru;
}

void WakefulnessModel::setStaysAwake(bool stays) {
    bdelost_.setDrzetVzhuru(stays);
}

QString WakefulnessModel::state() const {
    return localized(bdelost_.stavText());
}

QString WakefulnessModel::loginTrouble() const {
    return localized(bdelost_.stav().potiz.value().value_or(Sentence()));
}

QString WakefulnessModel::wakeTrouble() const {
    return localized(bdelost_.stav().keepAwakeTrouble.value().value_or(Sentence()));
}

QString WakefulnessModel::trouble() const {
    return localized(state_.settingsTrouble.value().value_or(Sentence()));
}

} // namespace morvex
