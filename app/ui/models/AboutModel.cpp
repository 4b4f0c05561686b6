#include "app/ui/models/AboutModel.h"

#include "app/ui/Localized.h"
#include "shared/wire/ProtocolVersion.h"

#include <utility>

namespace morvex {

AboutModel::AboutModel(CompanionState& state, Surroundings surroundings)
    : state_(state), surroundings_(std::move(surroundings)) {
    watch(state_.identifikator);
}

QString AboutModel::identifier() const {
    return QString::fromStdString(state_.identifikator.value());
}

void AboutModel::copyIdentifier() {
    surroundings_.clipboard.setText(state_.identifikator.value());
}

QString AboutModel::trouble() const {
    return localized(surroundings_.settingsProblem().value_or(std::string()));
}

QString AboutModel::protocolVersion() const {
    return QString::fromStdString(ProtocolVersion::current.text());
}

} // namespace morvex
