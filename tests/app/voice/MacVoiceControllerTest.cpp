#include "app/voice/MacVoiceController.h"

#include "platform/memory/ManualExecutor.h"
#include "platform/memory/MemoryDefaults.h"
#include "platform/memory/MemoryVault.h"
#include "shared/wire/Json.h"

#include <gtest/gtest.h>

#include <memory>

namespace morvex {
namespace {

const std::string waitsForKey = "Čekám na bezpečné předání OpenAI klíče z iPhonu.";

class MacVoiceControllerTest : public testing::Test {
  protected:
    /// A controller as after a start of the program.
    MacVoiceController& start() {
        hlas = std::make_unique<MacVoiceController>(defaults, keychain);
        EXPECT_TRUE(executor.run(hlas->load()));
        connection = hlas->priZmene([this] { ++changes; });
        changes = 0;
        return *hlas;
    }

    void setKey(const std::string& key) { EXPECT_TRUE(executor.run(hlas->setAPIKey(key))); }

    void apply(CompanionPreferences preferences) {
        EXPECT_TRUE(executor.run(hlas->applyPreferences(std::move(preferences))));
    }

    void store(const std::string& account, std::string_view value) {
        vault.items[{Keychain::service, account}] = toBytes(value);
    }

    std::optional<std::string> stored(const std::string& account) {
        auto found = vault.items.find({Keychain::service, account});
        if (found == vault.items.end()) return std::nullopt;
        return std::string(asText(found->second));
    }

    void keep(const std::string& key, const std::string& text) { defaults.set(key, text); }

    MemoryVault vault;
    MemoryDefaults defaults;
    ManualExecutor executor;
    Keychain keychain{vault, executor};
    std::unique_ptr<MacVoiceController> hlas;
    int changes = 0;
    Connection connection;
};

TEST_F(MacVoiceControllerTest, AFreshInstallationHasNoKeyAndTheUsualPreferences) {
    auto& fresh = start();
    EXPECT_EQ(fresh.apiKey(), "");
    EXPECT_EQ(fresh.credentialProblem(), std::nullopt);
    EXPECT_EQ(fresh.voice(), "sage");
    EXPECT_EQ(fresh.languageMode(), "phone");
    EXPECT_EQ(fresh.languageCode(), "cs");
    EXPECT_EQ(fresh.shortcut(), MacHotkey{});
    EXPECT_TRUE(fresh.places().empty());
    EXPECT_EQ(defaults.writes, 0);
}

TEST_F(MacVoiceControllerTest, ListsAreInTheirOrder) {
    std::vector<std::string_view> languages(MacVoiceController::supportedLanguages.begin(),
                                            MacVoiceController::supportedLanguages.end());
    EXPECT_EQ(languages, (std::vector<std::string_view>{"cs", "en", "de", "fr", "es"}));
    std::vector<std::string_view> voices(MacVoiceController::supportedVoices.begin(),
                                         MacVoiceController::supportedVoices.end());
    EXPECT_EQ(voices, (std::vector<std::string_view>{"marin", "cedar", "alloy", "ash", "ballad", "coral",
                                                     "echo", "sage", "shimmer", "verse"}));
}

TEST_F(MacVoiceControllerTest, EverythingSurvivesARestart) {
    start();
    setKey("sk-1");
    MacHotkey hotkey{MacHotkey::Kind::key, 40, MacHotkey::control, "K"};
    hlas->setShortcut(hotkey);
    apply({"de", "marin", {{{"Práce", "Dlouhá 1"}}}});
    auto& again = start();
    EXPECT_EQ(again.apiKey(), "sk-1");
    EXPECT_EQ(again.shortcut(), hotkey);
    EXPECT_EQ(again.languageCode(), "de");
    EXPECT_EQ(again.textLanguage(), "de");
    EXPECT_EQ(again.voice(), "marin");
    EXPECT_EQ(again.places(), (std::vector<CompanionPlace>{{"Práce", "Dlouhá 1"}}));
}

TEST_F(MacVoiceControllerTest, LanguageAndModeAsTheyAreFoundAtTheStart) {
    struct Row {
        const char* mode;
        const char* language;
        std::string foundMode;
        std::string foundLanguage;
    };

    const std::vector<Row> rows{
        {nullptr, "fr", "phone", "fr"}, {"phone", "xx", "phone", "cs"}, {"xx", "en", "phone", "en"},
        {"de", "fr", "de", "de"},       {"de", nullptr, "de", "de"},    {"", "", "phone", "cs"},
    };
    for (const auto& row : rows) {
        defaults = {};
        if (row.mode) keep("app.language.mode", row.mode);
        if (row.language) keep("app.language", row.language);
        start();
        EXPECT_EQ(hlas->languageMode(), row.foundMode);
        EXPECT_EQ(hlas->languageCode(), row.foundLanguage);
    }
}

/// A voice of the phone is checked, one that is kept is not.
TEST_F(MacVoiceControllerTest, AStoredVoiceNameIsNotCheckedWhileThePhonesIs) {
    keep("voice.name", "nova");
    start();
    EXPECT_EQ(hlas->voice(), "nova");
    apply({"", "orion", {}});
    EXPECT_EQ(hlas->voice(), "nova");
    apply({"", "verse", {}});
    EXPECT_EQ(hlas->voice(), "verse");
    EXPECT_EQ(defaults.text("voice.name"), "verse");
}

TEST_F(MacVoiceControllerTest, DamagedShortcutAndPlacesCountAsNone) {
    defaults.set("voice.hotkey", toBytes("{\"kind\":\"mouse\"}"));
    store("companion.places", R"([{"name":"Domov"}])");
    start();
    EXPECT_EQ(hlas->shortcut(), MacHotkey{});
    EXPECT_TRUE(hlas->places().empty());
}

TEST_F(MacVoiceControllerTest, AKeyIsTrimmedAndCountsOnceItIsKept) {
    start();
    setKey("  sk-1\n");
    EXPECT_EQ(hlas->apiKey(), "sk-1");
    EXPECT_EQ(stored("openai.apiKey"), "sk-1");
    EXPECT_EQ(hlas->credentialProblem(), std::nullopt);
    EXPECT_EQ(changes, 1);
    setKey("sk-1");
    EXPECT_EQ(changes, 1) << "an equal key is no change";
}

TEST_F(MacVoiceControllerTest, AnEmptyKeyIsForgottenEverywhere) {
    store("openai.apiKey", "sk-1");
    start();
    setKey(" \n");
    EXPECT_EQ(hlas->apiKey(), "");
    EXPECT_EQ(stored("openai.apiKey"), std::nullopt);
    EXPECT_EQ(hlas->credentialProblem(), waitsForKey);
    setKey("sk-2");
    EXPECT_EQ(hlas->credentialProblem(), std::nullopt);
}

TEST_F(MacVoiceControllerTest, ARefusedKeyLeavesTheOneOfBeforeInUseAndTellsWhy) {
    store("openai.apiKey", "sk-1");
    start();
    vault.refusals["add openai.apiKey"] = vaultStatus::interactionNotAllowed;
    setKey("sk-2");
    EXPECT_EQ(hlas->apiKey(), "sk-1");
    EXPECT_EQ(hlas->credentialProblem(), "Keychain error -25308");
}

TEST_F(MacVoiceControllerTest, AKeyDoesNotCountWhileTheKeychainStillWorks) {
    ManualExecutor storage;
    Keychain slow(vault, storage);
    MacVoiceController waiting(defaults, slow);
    EXPECT_FALSE(executor.run(waiting.setAPIKey("první")));
    EXPECT_FALSE(executor.run(waiting.setAPIKey("")));
    EXPECT_FALSE(executor.run(waiting.setAPIKey("třetí")));
    EXPECT_EQ(waiting.apiKey(), "");
    storage.runUntilIdle();
    executor.runUntilIdle();
    EXPECT_EQ(waiting.apiKey(), "třetí");
    EXPECT_EQ(stored("openai.apiKey"), "třetí");
    EXPECT_EQ(waiting.credentialProblem(), std::nullopt);
}

/// The first language of the phone is what lets the texts leave Czech, also towards a choice made here
/// before.
TEST_F(MacVoiceControllerTest, TheTextsStayCzechUntilThePhoneSentALanguage) {
    start();
    hlas->setLanguageMode("de");
    EXPECT_EQ(hlas->languageCode(), "de");
    EXPECT_EQ(hlas->textLanguage(), "cs");
    changes = 0;
    apply({"en", "", {}});
    EXPECT_EQ(hlas->languageCode(), "de");
    EXPECT_EQ(hlas->textLanguage(), "de");
    EXPECT_EQ(defaults.text("app.language.phone"), "en");
    EXPECT_EQ(changes, 1);
}

TEST_F(MacVoiceControllerTest, TheLanguageOfThePhoneIsFollowedInItsModeAlone) {
    start();
    apply({"fr", "", {}});
    EXPECT_EQ(hlas->languageCode(), "fr");
    EXPECT_EQ(defaults.text("app.language"), "fr");
    EXPECT_EQ(defaults.text("app.language.phone"), "fr");
    EXPECT_EQ(defaults.boolean("app.language.receivedFromPhone"), true);
    hlas->setLanguageMode("es");
    apply({"en", "", {}});
    EXPECT_EQ(hlas->languageCode(), "es");
    EXPECT_EQ(defaults.text("app.language"), "es");
    hlas->setLanguageMode("phone");
    EXPECT_EQ(hlas->languageCode(), "en");
    EXPECT_EQ(defaults.text("app.language"), "en");
    EXPECT_EQ(defaults.text("app.language.mode"), "phone");
}

TEST_F(MacVoiceControllerTest, UnsupportedCodesAreIgnored) {
    start();
    apply({"it", "", {}});
    apply({"CS", "", {}});
    apply({"phone", "", {}});
    hlas->setLanguageMode("it");
    EXPECT_EQ(defaults.writes, 0);
    EXPECT_EQ(changes, 0);
    EXPECT_EQ(defaults.boolean("app.language.receivedFromPhone"), std::nullopt);
}

TEST_F(MacVoiceControllerTest, FollowingThePhoneWithNothingReceivedAndAnUnsupportedCodeYieldsCzech) {
    keep("app.language", "xx");
    start();
    hlas->setLanguageMode("phone");
    EXPECT_EQ(hlas->languageCode(), "cs");
    EXPECT_EQ(defaults.text("app.language"), "cs");
    keep("app.language.phone", "xx");
    hlas->setLanguageMode("en");
    hlas->setLanguageMode("phone");
    EXPECT_EQ(hlas->languageCode(), "cs");
}

TEST_F(MacVoiceControllerTest, FollowingThePhoneWithNothingReceivedKeepsTheLanguage) {
    start();
    hlas->setLanguageMode("fr");
    hlas->setLanguageMode("phone");
    EXPECT_EQ(hlas->languageCode(), "fr");
}

TEST_F(MacVoiceControllerTest, EachPreferenceActsAlone) {
    start();
    apply({"", "", {{{"Domov", "Krátká 2"}}}});
    EXPECT_EQ(hlas->places().size(), 1U);
    EXPECT_EQ(hlas->voice(), "sage");
    apply({"", "ash", {}});
    EXPECT_EQ(hlas->places().size(), 1U) << "no list is not an empty one";
    EXPECT_EQ(hlas->languageCode(), "cs");
    apply({"", "", std::vector<CompanionPlace>{}});
    EXPECT_TRUE(hlas->places().empty());
    EXPECT_EQ(stored("companion.places"), "[]");
}

TEST_F(MacVoiceControllerTest, PlacesAreKeptAsTheirRecordsAndARefusalIsIgnored) {
    start();
    apply({"", "", {{{"Domov", "Krátká 2"}, {"Práce", "Dlouhá 1"}}}});
    EXPECT_EQ(stored("companion.places"),
              R"([{"name":"Domov","address":"Krátká 2"},{"name":"Práce","address":"Dlouhá 1"}])");
    vault.refusals["add companion.places"] = vaultStatus::io;
    apply({"", "", {{{"Chata", "Lesní 3"}}}});
    EXPECT_EQ(hlas->places(), (std::vector<CompanionPlace>{{"Chata", "Lesní 3"}}));
    EXPECT_EQ(hlas->credentialProblem(), std::nullopt);
}

TEST_F(MacVoiceControllerTest, APlaceIsFoundByItsNameInCapitalsWithoutDiacritics) {
    start();
    apply({"", "", {{{"Chalupa u řeky", "Říční 7"}, {"domov", "první"}, {"Domov", "druhý"}}}});
    const std::vector<std::pair<std::optional<std::string>, std::optional<std::string>>> rows{
        {"CHALUPA U REKY", "Říční 7"},          {"DOMOV", "první"},           {"Chalupa", "Chalupa"},
        {"Dlouhá 1, Praha", "Dlouhá 1, Praha"}, {std::nullopt, std::nullopt}, {"", ""},
    };
    for (const auto& [text, address] : rows) EXPECT_EQ(hlas->resolvePlace(text), address);
}

TEST_F(MacVoiceControllerTest, EqualChoicesTellNobody) {
    start();
    hlas->setVoice("sage");
    EXPECT_EQ(defaults.writes, 0);
    hlas->setShortcut(MacHotkey{});
    hlas->setLanguageMode("phone");
    EXPECT_EQ(changes, 0);
    hlas->setVoice("ash");
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(defaults.text("voice.name"), "ash");
}

TEST_F(MacVoiceControllerTest, ALanguageIsKeptInOneSaveWithAllThatItChanges) {
    start();
    apply({"fr", "", {}});
    EXPECT_EQ(defaults.writes, 1);
    hlas->setLanguageMode("de");
    EXPECT_EQ(defaults.writes, 2);
}

TEST_F(MacVoiceControllerTest, TheShortcutIsKeptAsItsRecord) {
    start();
    MacHotkey hotkey{MacHotkey::Kind::key, 49, MacHotkey::command | MacHotkey::shift, "Space"};
    hlas->setShortcut(hotkey);
    EXPECT_EQ(hlas->shortcut(), hotkey);
    EXPECT_EQ(changes, 1);
    EXPECT_EQ(defaults.data("voice.hotkey"), toBytes(encode(hotkey)));
}

TEST_F(MacVoiceControllerTest, AnUnchangedShortcutIsWrittenAllTheSameAndNotTold) {
    start();
    const auto writes = defaults.writes;
    hlas->setShortcut(hlas->shortcut());
    EXPECT_EQ(defaults.writes, writes + 1);
    EXPECT_EQ(defaults.data("voice.hotkey"), toBytes(encode(MacHotkey{})));
    EXPECT_EQ(changes, 0);
}

} // namespace
} // namespace morvex
