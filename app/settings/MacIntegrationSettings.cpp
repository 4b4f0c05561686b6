#include "app/settings/MacIntegrationSettings.h"

#include <string>
#include <utility>

namespace morvex {

namespace {

struct Switch {
    Integration integration;
    const char* key;
    const char* fallbackKey; ///< read when `key` is absent; never written
    bool fallback;
};

/// The single switch for mail from before there were two. It is only read.
constexpr const char* earlierMailKey = "integration.mail.enabled";

/// Only web search is opt-in, because it sends spoken text to a service outside the pair.
constexpr std::array<Switch, integrationCount> switches{{
    {Integration::calendar, "integration.calendar.enabled", nullptr, true},
    {Integration::reminders, "integration.reminders.enabled", nullptr, true},
    {Integration::contacts, "integration.contacts.enabled", nullptr, true},
    {Integration::notes, "integration.notes.enabled", nullptr, true},
    {Integration::customApps, "integration.customApps.enabled", nullptr, true},
    {Integration::appleMail, "integration.appleMail.enabled", earlierMailKey, true},
    {Integration::smtp, "integration.smtp.enabled", earlierMailKey, true},
    {Integration::codex, "integration.codex.enabled", nullptr, true},
    {Integration::claude, "integration.claude.enabled", nullptr, true},
    {Integration::files, "integration.files.enabled", nullptr, true},
    {Integration::terminal, "integration.terminal.enabled", nullptr, true},
    {Integration::webSearch, "integration.webSearch.enabled", nullptr, false},
}};

constexpr bool areInOrder() {
    for (std::size_t i = 0; i < switches.size(); ++i)
        if (static_cast<std::size_t>(switches[i].integration) != i) return false;
    return true;
}

static_assert(areInOrder(), "a switch is found by the number of its integration");

bool read(const UserDefaults& defaults, const Switch& row) {
    if (auto value = defaults.boolean(row.key)) return *value;
    if (row.fallbackKey) return defaults.boolean(row.fallbackKey).value_or(row.fallback);
    return row.fallback;
}

} // namespace

MacIntegrationSettings::MacIntegrationSettings(UserDefaults& defaults) : defaults_(defaults) {
    for (std::size_t i = 0; i < integrationCount; ++i) values_[i] = read(defaults, switches[i]);
}

void MacIntegrationSettings::turnOff(Integration integration) {
    // A write is also needed to overtake a switching on that is not saved yet.
    if (isOn(integration) || isTurningOn_[index(integration)])
        defaults_.set(switches[index(integration)].key, false);
    change(integration, false);
}

Task<Result<void>> MacIntegrationSettings::turnOn(Integration integration) {
    const auto i = index(integration);
    if (values_[i]) co_return Result<void>{};
    DefaultsValues values;
    values.emplace(switches[i].key, true);
    ++isTurningOn_[i];
    auto saved = co_await defaults_.setOnceSaved(std::move(values));
    --isTurningOn_[i];
    if (saved) change(integration, true);
    if (!saved && saved.error().as<ChangedMeanwhile>()) co_return Result<void>{};
    co_return saved;
}

void MacIntegrationSettings::change(Integration integration, bool value) {
    if (std::exchange(values_[index(integration)], value) != value) onChange_.tell();
}

} // namespace morvex
