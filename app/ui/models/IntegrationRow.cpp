#include "app/ui/models/IntegrationRow.h"

#include "app/ui/Localized.h"

#include <utility>

namespace morvex {

IntegrationRow::IntegrationRow(MacIntegrationSettings& settings, TaskScope& scope, Description description,
                               Switched switched)
    : settings_(settings),
      scope_(scope),
      description_(std::move(description)),
      switched_(std::move(switched)) {}

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
    return localized(description_.action().label);
}

void IntegrationRow::act() {
    if (const auto action = description_.action(); action.run) action.run();
}

bool IntegrationRow::on() const {
    return description_.available && settings_.isOn(description_.integration);
}

void IntegrationRow::setOn(bool on) {
    if (on) return scope_.spawn(turnOn(&settings_, description_.integration, this));
    settings_.turnOff(description_.integration);
    end({});
}

Task<void> IntegrationRow::turnOn(MacIntegrationSettings* settings, Integration integration,
                                  QPointer<IntegrationRow> row) {
    const auto result = co_await settings->turnOn(integration);
    if (row) row->end(result);
}

void IntegrationRow::end(const Result<void>& result) {
    switched_(result);
    refresh();
}

} // namespace morvex
