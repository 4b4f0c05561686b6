#include "tests/support/CompanionHarness.h"

#include <algorithm>

namespace morvex {
namespace {

/// What the phone sends of its own settings, through the whole companion.
class PhoneSettingsTest : public CompanionHarness {
  protected:
    void send(MacPayload payload) {
        phone.send(std::move(payload), "settings");
        executor.runUntilIdle();
    }

    std::optional<std::string> secret(const std::string& account) {
        auto found = vault.items.find({Keychain::service, account});
        if (found == vault.items.end()) return std::nullopt;
        return std::string(asText(found->second));
    }
};

TEST_F(PhoneSettingsTest, AKeyIsKeptAndAStatusFollows) {
    startSecured();
    send({MacPayload::OpenAICredential{" sk-1\n"}});
    EXPECT_EQ(features->voice.controller().apiKey(), "sk-1");
    EXPECT_EQ(secret("openai.apiKey"), "sk-1");
    EXPECT_EQ(takeStatuses().size(), 1U);
    send({MacPayload::OpenAICredential{""}});
    EXPECT_EQ(features->voice.controller().apiKey(), "");
    EXPECT_EQ(secret("openai.apiKey"), std::nullopt);
    EXPECT_EQ(takeStatuses().size(), 1U);
}

TEST_F(PhoneSettingsTest, PreferencesAreTakenWithoutAStatus) {
    startSecured();
    send({MacPayload::Preferences{{"en", "marin", {{{"Domov", "Krátká 2"}}}}}});
    EXPECT_EQ(features->voice.controller().languageCode(), "en");
    EXPECT_EQ(features->voice.controller().voice(), "marin");
    EXPECT_EQ(features->voice.controller().resolvePlace("DOMOV"), "Krátká 2");
    EXPECT_TRUE(takeStatuses().empty());
}

TEST_F(PhoneSettingsTest, CustomAppsAreKeptAndStatusesFollow) {
    startSecured();
    send({MacPayload::CustomApps{{{"p1", "Počasí", "https://example.com", "tajné"}}}});
    EXPECT_EQ(customApps(), (std::vector<AppSummary>{{"p1", "Počasí", "https://example.com", true, true}}));
    EXPECT_EQ(secret("custom.app.p1.token"), "tajné");
    EXPECT_EQ(takeStatuses().size(), 2U) << "one for the change, one for the message";
}

TEST_F(PhoneSettingsTest, TheNextMessageWaitsUntilTheKeychainIsDone) {
    ManualExecutor slow;
    storage = &slow;
    startPaired();
    EXPECT_TRUE(sockets.urls.empty()) << "nothing of the phone comes before the secrets are read";
    for (int round = 0; round < 8; ++round) {
        slow.runUntilIdle();
        executor.runUntilIdle();
    }
    phone.logIn();
    executor.runUntilIdle();
    phone.exchangeHellos();
    executor.runUntilIdle();
    (void)phone.take();

    phone.send({MacPayload::CustomApps{{{"p1", "a", "https://a", "t"}}}}, "apps");
    phone.call("mac.status", "{}", "call");
    executor.runUntilIdle();
    EXPECT_TRUE(phone.take().empty());
    for (int round = 0; round < 4; ++round) {
        slow.runUntilIdle();
        executor.runUntilIdle();
    }
    auto received = phone.take();
    ASSERT_FALSE(received.empty());
    EXPECT_TRUE(received[0].payload.as<MacPayload::Status>());
    EXPECT_TRUE(std::ranges::any_of(received, [](const ScriptedPhone::Received& each) {
        return each.requestID == "call";
    })) << "the call is answered after all";
    end();
}

TEST_F(PhoneSettingsTest, EverythingIsThereAfterARestart) {
    startSecured();
    send({MacPayload::OpenAICredential{"sk-1"}});
    send({MacPayload::Preferences{{"de", "ash", {{{"Domov", "Krátká 2"}}}}}});
    send({MacPayload::CustomApps{{{"p1", "a", "https://a", "t"}}}});
    end();
    start();
    EXPECT_EQ(features->voice.controller().apiKey(), "sk-1");
    EXPECT_EQ(features->voice.controller().textLanguage(), "de");
    EXPECT_EQ(features->voice.controller().voice(), "ash");
    EXPECT_EQ(features->voice.controller().places().size(), 1U);
    EXPECT_EQ(features->customApps.service().apps().size(), 1U);
}

TEST_F(PhoneSettingsTest, TheSwitchOfTheIntegrationReachesTheApps) {
    defaults.set("integration.customApps.enabled", false);
    startSecured();
    EXPECT_FALSE(features->customApps.service().isActive());
    EXPECT_TRUE(ended(companion->integrations().turnOn(Integration::customApps)));
    EXPECT_TRUE(features->customApps.service().isActive());
    EXPECT_EQ(takeStatuses().size(), 1U);
    companion->integrations().turnOff(Integration::customApps);
    EXPECT_FALSE(features->customApps.service().isActive());
    EXPECT_EQ(takeStatuses().size(), 2U);
}

} // namespace
} // namespace morvex
