#include "app/personal/MacIntegrationSettings.h"

#include <string>

namespace morvex {

namespace {

struct Switch {
    const char* key;
    const char* fallbackKey; ///< read when `key` is absent; never written
    bool fallback;
};

/// The one switch that mail had before there were two. Only ever read.
constexpr const char* earlierMailKey = "integration.mail.enabled";

/// In the order of `Integration`. Web search alone is opt-in: it sends spoken text to a service outside the
/// pair.
constexpr std::array<Switch, integrationCount> switches{{
    {"integration.calendar.enabled", nullptr, true},
    {"integration.reminders.enabled", nullptr, true},
    {"integration.contacts.enabled", nullptr, true},
    {"integration.notes.enabled", nullptr, true},
    {"integration.customApps.enabled", nullptr, true},
    {"integration.appleMail.enabled", earlierMailKey, true},
    {"integration.smtp.enabled", earlierMailKey, true},
    {"integration.codex.enabled", nullptr, true},
    {"integration.claude.enabled", nullptr, true},
    {"integration.files.enabled", nullptr, true},
    {"integration.terminal.enabled", nullptr, true},
    {"integration.webSearch.enabled", nullptr, false},
}};

bool read(const UserDefaults& defaults, const Switch& row) {
    if (auto value = defaults.boolean(row.key)) return *value;
    if (row.fallbackKey) return defaults.boolean(row.fallbackKey).value_or(row.fallback);
    return row.fallback;
}

} // namespace

MacIntegrationSettings::MacIntegrationSettings(UserDefaults& defaults) : defaults_(defaults) {
    for (std::size_t i = 0; i < integrationCount; ++i) values_[i] = read(defaults, switches[i]);
}

void MacIntegrationSettings::set(Integration integration, bool value) {
    auto i = index(integration);
    if (values_[i] == value) return;
    values_[i] = value;
    defaults_.set(switches[i].key, value);
    if (onChange) onChange();
}

} // namespace morvex
