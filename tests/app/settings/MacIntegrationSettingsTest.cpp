#include "app/settings/MacIntegrationSettings.h"

#include "platform/memory/ManualExecutor.h"
#include "platform/memory/MemoryDefaults.h"
#include "tests/support/SlowDefaults.h"

#include <gtest/gtest.h>

#include <optional>
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

void turn(MacIntegrationSettings& settings, Integration integration, bool on) {
    ManualExecutor executor;
    if (on)
        EXPECT_TRUE(executor.run(settings.turnOn(integration)).value());
    else
        settings.turnOff(integration);
}

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
        turn(settings, integration, changed);
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
    turn(settings, Integration::smtp, true);
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
    const auto connection = settings.onChange([&told] { ++told; });
    settings.turnOff(Integration::files);
    settings.turnOff(Integration::files);
    turn(settings, Integration::notes, true);
    EXPECT_EQ(told, 1);
    EXPECT_EQ(defaults.writes, 1);
}

TEST(MacIntegrationSettings, WhoIsToldFindsTheNewValueInPlace) {
    MemoryDefaults defaults;
    MacIntegrationSettings settings(defaults);
    std::vector<std::pair<bool, std::optional<bool>>> found;
    const auto connection = settings.onChange([&] {
        found.emplace_back(settings.isOn(Integration::files), defaults.boolean("integration.files.enabled"));
    });
    turn(settings, Integration::files, false);
    turn(settings, Integration::files, true);
    EXPECT_EQ(found, (std::vector<std::pair<bool, std::optional<bool>>>{{false, false}, {true, true}}));
}

/// Settings on a disk that works when the test lets it.
class SlowSwitchTest : public testing::Test, public SlowDefaults {
  protected:
    SlowSwitchTest() {
        connection = settings.onChange([this] { ++told; });
        settings.turnOff(Integration::files);
        write();
        told = 0;
    }

    /// Starts to switch on. The task's end is noted.
    void turnOn() {
        home.start(note());
        home.runUntilIdle();
    }

    Task<void> note() {
        const auto kept = co_await settings.turnOn(Integration::files);
        ends.push_back(kept ? "kept" : "refused");
    }

    [[nodiscard]] bool isOn() const { return settings.isOn(Integration::files); }

    MacIntegrationSettings settings{defaults};
    int told = 0;
    Connection connection;
    std::vector<std::string> ends;
};

TEST_F(SlowSwitchTest, OnCountsOnceItIsSaved) {
    turnOn();
    EXPECT_FALSE(isOn());
    EXPECT_EQ(told, 0);
    write();
    EXPECT_TRUE(isOn());
    EXPECT_EQ(told, 1);
    EXPECT_EQ(ends, std::vector<std::string>{"kept"});
}

TEST_F(SlowSwitchTest, OnThatCannotBeSavedStaysOffAlsoInTheFile) {
    breakSaves();
    turnOn();
    write();
    EXPECT_FALSE(isOn());
    EXPECT_EQ(told, 0);
    EXPECT_EQ(ends, std::vector<std::string>{"refused"});
    mendSaves();
    defaults.set("later", true);
    write();
    EXPECT_EQ(kept().boolean("integration.files.enabled"), false);
}

TEST_F(SlowSwitchTest, OffCountsAtOnceAndIsSavedLater) {
    turnOn();
    write();
    breakSaves();
    settings.turnOff(Integration::files);
    EXPECT_FALSE(isOn());
    write();
    EXPECT_TRUE(defaults.problem());
    mendSaves();
    retry();
    EXPECT_FALSE(defaults.problem());
    EXPECT_EQ(kept().boolean("integration.files.enabled"), false);
}

TEST_F(SlowSwitchTest, OffEndsAnOnThatIsNotSavedYet) {
    turnOn();
    settings.turnOff(Integration::files);
    write();
    write();
    EXPECT_FALSE(isOn());
    EXPECT_EQ(kept().boolean("integration.files.enabled"), false);
    EXPECT_EQ(ends, std::vector<std::string>{"kept"}) << "nobody is told of a failure";
}

TEST_F(SlowSwitchTest, OffDuringTheSaveOfAnOnHoldsAlsoInTheFile) {
    turnOn();
    disk.runUntilIdle();
    settings.turnOff(Integration::files);
    write();
    write();
    EXPECT_FALSE(isOn());
    EXPECT_EQ(kept().boolean("integration.files.enabled"), false);
}

} // namespace
} // namespace morvex
