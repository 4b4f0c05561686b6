#include "app/ui/models/AboutModel.h"

#include "shared/wire/ProtocolVersion.h"

#include <utility>

namespace morvex {

AboutModel::AboutModel(CompanionState& state, QString appVersion)
    : state_(state), appVersion_(std::move(appVersion)) {
    watch(state_.identifikator);
}

QString AboutModel::identifier() const {
    return QString::fromStdString(state_.identifikator.value());
}

QString AboutModel::protocolVersion() const {
    return QString::fromStdString(ProtocolVersion::current.text());
}

} // namespace morvex
