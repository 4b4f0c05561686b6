#include "app/personal/MacIntegrationSettings.h"

#include "platform/memory/MemoryDefaults.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace morvex {
namespace {

const std::vector<std::pair<Integration, std::string>> keys{
    {Integration::calendar, "integration.calendar.enabled"},
    {Integration::reminders, "integration.reminders.enabled"},
    {Integration::contacts, "integration.contacts.enabled"},
    {Integration::notes, "integration.notes.enabled"},
    {Integration::customApps, "integration.customApps.enabled"},
    {Integration::appleMail, "integration.appleMail.enabled"},
    {Integration::smtp, "integration.smtp.enabled"},
    {Integration::codex, "integration.codex.enabled"},
    {Integration::claude, "integration.claude.enabled"},
    {Integration::files, "integration.files.enabled"},
    {Integration::terminal, "integration.terminal.enabled"},
    {Integration::webSearch, "integration.webSearch.enabled"},
};

TEST(MacIntegrationSettings, AFreshInstallationHasEverythingOnButWebSearch) {
    MemoryDefaults defaults;
    MacIntegrationSettings settings(defaults);
    for (const auto& [integration, key] : keys)
        EXPECT_EQ(settings.isOn(integration), integration != Integration::webSearch) << key;
    EXPECT_EQ(defaults.writes, 0);
}

TEST(MacIntegrationSettings, EverySwitchHasItsKey) {
    for (const auto& [integration, key] : keys) {
        MemoryDefaults defaults;
        MacIntegrationSettings settings(defaults);
        bool changed = !settings.isOn(integration);
        settings.set(integration, changed);
        EXPECT_EQ(defaults.boolean(key), changed);
        EXPECT_EQ(defaults.writes, 1);
        EXPECT_EQ(MacIntegrationSettings(defaults).isOn(integration), changed);
    }
}

TEST(MacIntegrationSettings, TheEarlierMailSwitchIsOnlyReadWhereTheNewOnesAreAbsent) {
    MemoryDefaults defaults;
    defaults.set("integration.mail.enabled", false);
    EXPECT_FALSE(MacIntegrationSettings(defaults).isOn(Integration::appleMail));
    EXPECT_FALSE(MacIntegrationSettings(defaults).isOn(Integration::smtp));
    MacIntegrationSettings settings(defaults);
    settings.set(Integration::smtp, true);
    EXPECT_TRUE(MacIntegrationSettings(defaults).isOn(Integration::smtp));
    EXPECT_FALSE(MacIntegrationSettings(defaults).isOn(Integration::appleMail));
    EXPECT_EQ(defaults.boolean("integration.mail.enabled"), false);
}

TEST(MacIntegrationSettings, AValueThatIsNoBooleanGivesTheDefault) {
    MemoryDefaults defaults;
    defaults.set("integration.files.enabled", std::string("ne"));
    defaults.set("integration.webSearch.enabled", std::string("ano"));
    MacIntegrationSettings settings(defaults);
    EXPECT_TRUE(settings.isOn(Integration::files));
    EXPECT_FALSE(settings.isOn(Integration::webSearch));
}

TEST(MacIntegrationSettings, AMailSwitchThatIsNoBooleanFallsBackToTheEarlierOne) {
    MemoryDefaults defaults;
    defaults.set("integration.smtp.enabled", std::string("ano"));
    EXPECT_TRUE(MacIntegrationSettings(defaults).isOn(Integration::smtp));
    defaults.set("integration.mail.enabled", false);
    EXPECT_FALSE(MacIntegrationSettings(defaults).isOn(Integration::smtp));
    defaults.set("integration.mail.enabled", std::string("ne"));
    EXPECT_TRUE(MacIntegrationSettings(defaults).isOn(Integration::smtp));
}

TEST(MacIntegrationSettings, WritingTheSameValueTwiceTellsOnce) {
    MemoryDefaults defaults;
    MacIntegrationSettings settings(defaults);
    int told = 0;
    settings.onChange = [&told] { ++told; };
    settings.set(Integration::files, false);
    settings.set(Integration::files, false);
    settings.set(Integration::notes, true);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(defaults.writes, 1);
}

} // namespace
} // namespace morvex
