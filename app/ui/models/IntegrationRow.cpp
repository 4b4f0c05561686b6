#include "app/ui/models/IntegrationRow.h"

#include "app/ui/Localized.h"

#include <utility>

namespace morvex {

IntegrationRow::IntegrationRow(MacIntegrationSettings& settings, Description description)
    : settings_(settings), description_(std::move(description)) {}

QString IntegrationRow::name() const {
    return localized(description_.name);
}

QString IntegrationRow::detail() const {
    return localized(description_.detail());
}

QString IntegrationRow::problem() const {
    return localized(description_.problem());
}

QString IntegrationRow::action() const {
    return localized(description_.action);
}

bool IntegrationRow::on() const {
    return description_.available && settings_.isOn(description_.integration);
}

void IntegrationRow::setOn(bool on) {
    settings_.set(description_.integration, on);
    refresh();
}

} // namespace morvex
