#include "app/ui/models/AboutModel.h"

#include "app/ui/Localized.h"
#include "shared/wire/ProtocolVersion.h"

#include <utility>

namespace morvex {

AboutModel::AboutModel(CompanionState& state, QString appVersion, Clipboard& clipboard)
    : state_(state), appVersion_(std::move(appVersion)), clipboard_(clipboard) {
    watch(state_.identifier);
    watch(state_.settingsTrouble);
}

QString AboutModel::identifier() const {
    return QString::fromStdString(state_.identifier.value());
}

void AboutModel::copyIdentifier() {
    clipboard_.setText(state_.identifier.value());
}

QString AboutModel::trouble() const {
    return localized(state_.settingsTrouble.value().value_or(Sentence()));
}

QString AboutModel::protocolVersion() const {
    return QString::fromStdString(ProtocolVersion::current.text());
}

} // namespace morvex
