#include "app/customapps/MacCustomAppsService.h"

#include "platform/memory/ManualExecutor.h"
#include "platform/memory/MemoryDefaults.h"
#include "platform/posix/FileVault.h"
#include "shared/wire/CustomAppLimits.h"
#include "tests/app/customapps/CustomAppsParts.h"
#include "tests/support/ImmediateDefaults.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <memory>

namespace morvex {
namespace {

const std::string firstID = "mac-00000000-0000-4000-8000-000000000001";
const std::string secondID = "mac-00000000-0000-4000-8000-000000000002";

class MacCustomAppsServiceTest : public testing::Test {
  protected:
    MacCustomAppsServiceTest() { restart(); }

    void restart() {
        service = std::make_unique<MacCustomAppsService>(parts.services(defaults));
        connection = service->onChange([this] { ++changes; });
    }

    std::string save(std::optional<std::string> storedID, const std::string& name,
                     const std::string& endpoint, const std::string& token) {
        auto saved = executor.run(service->save(std::move(storedID), name, endpoint, token));
        return *saved ? "" : saved->error().popis().czech();
    }

    void replace(std::vector<CompanionCustomApp> list) {
        EXPECT_TRUE(executor.run(service->replacePhoneApps(std::move(list))));
    }

    void setEnabled(const std::string& id, bool enabled) {
        EXPECT_TRUE(executor.run(service->setEnabled(id, enabled)));
    }

    void remove(const std::string& id) { EXPECT_TRUE(executor.run(service->remove(id))); }

    std::optional<std::string> token(const std::string& id) {
        auto found = vault.items.find({Keychain::service, "custom.app." + id + ".token"});
        if (found == vault.items.end()) return std::nullopt;
        return std::string(asText(found->second));
    }

    std::vector<std::string> ids() {
        std::vector<std::string> all;
        for (const auto& app : service->apps()) all.push_back(app.id);
        return all;
    }

    [[nodiscard]] std::string metadata() const {
        return std::string(asText(defaults.data("custom.apps.metadata").value_or(Bytes())));
    }

    MemoryDefaults defaults;
    ManualExecutor executor;
    CustomAppsParts parts{executor};
    MemoryVault& vault = parts.vault;
    std::unique_ptr<MacCustomAppsService> service;
    int changes = 0;
    Connection connection;
};

using Ids = std::vector<std::string>;

CompanionCustomApp phoneApp(const std::string& id, const std::string& token = "t") {
    return {id, "Počasí", "https://example.com", token};
}

TEST_F(MacCustomAppsServiceTest, AddsAnAppOfThisComputerAndKeepsItsTokenApart) {
    EXPECT_EQ(save({}, " Počasí ", " https://example.com/ ", " tajné "), "");
    ASSERT_EQ(service->apps().size(), 1U);
    auto app = service->apps().front();
    app.outcome.reset();
    EXPECT_EQ(app, (AppSummary{firstID, "Počasí", "https://example.com/", true, false}));
    EXPECT_EQ(token(firstID), "tajné");
    EXPECT_EQ(metadata(), R"([{"id":")" + firstID +
                              R"(","name":"Počasí","endpoint":"https://example.com/","enabled":true,)"
                              R"("source":"mac"}])");
    EXPECT_EQ(changes, 1);
}

TEST_F(MacCustomAppsServiceTest, AnEmptyTokenOfANewAppStoresNothing) {
    service->setActive(false);
    EXPECT_EQ(save({}, "a", "https://a", "  "), "");
    EXPECT_TRUE(vault.calls.empty());
}

TEST_F(MacCustomAppsServiceTest, WhatIsMissingIsToldAndNothingIsAdded) {
    EXPECT_EQ(save({}, " \n", "https://a", "t"), "Doplň název vlastní aplikace.");
    EXPECT_EQ(save({}, "a", "http://a", "t"), "Adresa vlastní aplikace musí být platné HTTPS.");
    EXPECT_EQ(save({}, "a", " ", "t"), "Adresa vlastní aplikace musí být platné HTTPS.");
    vault.refusals["add custom.app." + firstID + ".token"] = vaultStatus::io;
    EXPECT_EQ(save({}, "a", "https://a", "t"), "Keychain error -36");
    EXPECT_TRUE(service->apps().empty());
    EXPECT_EQ(defaults.writes, 0);
    EXPECT_EQ(changes, 0);
}

TEST_F(MacCustomAppsServiceTest, ATokenLeftEmptyWhileEditingKeepsTheToken) {
    save({}, "a", "https://a", "první");
    setEnabled(firstID, false);
    EXPECT_EQ(save(firstID, "b", "https://b", " "), "");
    EXPECT_EQ(service->apps(), (std::vector<AppSummary>{{firstID, "b", "https://b", false, false}}));
    EXPECT_EQ(token(firstID), "první");
    EXPECT_EQ(save(firstID, "b", "https://b", "druhý"), "");
    EXPECT_EQ(token(firstID), "druhý");
}

TEST_F(MacCustomAppsServiceTest, AnEditWhoseTokenIsRefusedChangesNothing) {
    save({}, "a", "https://a", "první");
    auto before = metadata();
    vault.refusals["add custom.app." + firstID + ".token"] = vaultStatus::interactionNotAllowed;
    EXPECT_EQ(save(firstID, "b", "https://b", "druhý"), "Keychain error -25308");
    EXPECT_EQ(service->apps()[0].name, "a");
    EXPECT_EQ(metadata(), before);
}

TEST_F(MacCustomAppsServiceTest, EditingAnAppOfThePhoneAddsOneOfThisComputer) {
    replace({phoneApp("p1")});
    EXPECT_EQ(save("p1", "a", "https://a", ""), "");
    EXPECT_EQ(ids(), (Ids{firstID, "p1"}));
    EXPECT_EQ(save("unknown", "b", "https://b", ""), "");
    EXPECT_EQ(ids(), (Ids{firstID, secondID, "p1"})) << "apps of this computer stand first";
}

TEST_F(MacCustomAppsServiceTest, TakesThePhonesListInItsOrderBehindItsOwn) {
    service->setActive(false);
    save({}, "a", "https://a", "");
    replace({{"p2", " Dvě ", " https://b/x/ ", " t2 "}, phoneApp("p1")});
    EXPECT_EQ(service->apps(),
              (std::vector<AppSummary>{{firstID, "a", "https://a", true, false},
                                       {"p2", "Dvě", "https://b/x/", true, true},
                                       {"p1", "Počasí", "https://example.com", true, true}}));
    EXPECT_EQ(token("p2"), "t2");
    replace({phoneApp("p1")});
    EXPECT_EQ(ids(), (Ids{firstID, "p1"}));
    EXPECT_EQ(token("p2"), std::nullopt) << "the token of an app that is gone goes too";
    replace({});
    EXPECT_EQ(ids(), Ids{firstID});
    EXPECT_EQ(token("p1"), std::nullopt);
}

TEST_F(MacCustomAppsServiceTest, DropsEntriesOfThePhoneWithoutAnAcceptableAddress) {
    replace({phoneApp("p1")});
    replace({{"p1", "a", "http://a", "t"}, {"p2", "", "https://b", "t"}, {"p3", "c", "", "t"}});
    EXPECT_EQ(ids(), Ids{"p2"}) << "a name may be missing";
    EXPECT_EQ(token("p1"), std::nullopt);
    EXPECT_EQ(token("p3"), std::nullopt);
}

TEST_F(MacCustomAppsServiceTest, AnEmptyTokenOfThePhoneDeletesTheToken) {
    replace({phoneApp("p1", "t")});
    replace({phoneApp("p1", " ")});
    EXPECT_EQ(ids(), Ids{"p1"});
    EXPECT_EQ(token("p1"), std::nullopt);
}

TEST_F(MacCustomAppsServiceTest, ARefusedTokenIsDeletedAndTheListGoesOn) {
    service->setActive(false);
    vault.refusals["add custom.app.p1.token"] = vaultStatus::io;
    replace({phoneApp("p1"), phoneApp("p2")});
    EXPECT_EQ(ids(), (Ids{"p1", "p2"}));
    EXPECT_EQ(vault.calls, (std::vector<std::string>{"find custom.app.p1.token", "remove custom.app.p1.token",
                                                     "add custom.app.p1.token", "remove custom.app.p1.token",
                                                     "find custom.app.p2.token", "remove custom.app.p2.token",
                                                     "add custom.app.p2.token"}));
    EXPECT_EQ(token("p2"), "t");
}

TEST_F(MacCustomAppsServiceTest, ATokenThatIsThereAlreadyIsNotWrittenAgain) {
    service->setActive(false);
    replace({phoneApp("p1", "stejný"), phoneApp("p2", "starý")});
    vault.calls.clear();
    replace({phoneApp("p1", " stejný "), phoneApp("p2", "nový")});
    EXPECT_EQ(vault.calls,
              (std::vector<std::string>{"find custom.app.p1.token", "find custom.app.p2.token",
                                        "remove custom.app.p2.token", "add custom.app.p2.token"}));
    EXPECT_EQ(token("p1"), "stejný");
    EXPECT_EQ(token("p2"), "nový");
}

TEST_F(MacCustomAppsServiceTest, TheLongestIdStillNamesATokenInAVaultOfFiles) {
    TemporaryFolder folder;
    FileVault files(folder.path());
    Keychain filed(files, executor);
    MacCustomAppsService kept(parts.services(defaults, filed));
    const std::string longest = std::string(customAppLimits::longestID - 2, '/') + "é";
    EXPECT_TRUE(executor.run(kept.replacePhoneApps({phoneApp(longest), phoneApp(longest + "x")})));
    ASSERT_EQ(kept.apps().size(), 1U);
    EXPECT_EQ(files.find(Keychain::service, "custom.app." + longest + ".token").bytes, toBytes("t"));
}

TEST_F(MacCustomAppsServiceTest, TheSwitchOfAnAppSurvivesEachListOfThePhone) {
    replace({phoneApp("p1"), phoneApp("p2")});
    setEnabled("p1", false);
    replace({phoneApp("p2"), phoneApp("p1"), phoneApp("p3")});
    EXPECT_TRUE(service->apps()[0].enabled);
    EXPECT_FALSE(service->apps()[1].enabled);
    EXPECT_TRUE(service->apps()[2].enabled);
    replace({phoneApp("p2")});
    replace({phoneApp("p1")});
    EXPECT_TRUE(service->apps()[0].enabled) << "an app that was gone is new";
}

TEST_F(MacCustomAppsServiceTest, ASwitchThatIsTurnedWhileTheKeychainWorksHolds) {
    replace({phoneApp("p1")});
    ManualExecutor storage;
    Keychain slow(vault, storage);
    MacCustomAppsService waiting(parts.services(defaults, slow));
    EXPECT_FALSE(executor.run(waiting.replacePhoneApps({phoneApp("p1"), phoneApp("p2")})));
    EXPECT_TRUE(executor.run(waiting.setEnabled("p1", false)));
    for (int round = 0; round < 6; ++round) {
        storage.runUntilIdle();
        executor.runUntilIdle();
    }
    ASSERT_EQ(waiting.apps().size(), 2U);
    EXPECT_FALSE(waiting.apps()[0].enabled);
}

TEST_F(MacCustomAppsServiceTest, AnAppThatIsRemovedWhileItsTokenIsSavedStaysRemoved) {
    save({}, "a", "https://a", "první");
    ManualExecutor storage;
    Keychain slow(vault, storage);
    MacCustomAppsService waiting(parts.services(defaults, slow));
    EXPECT_FALSE(executor.run(waiting.save(firstID, "b", "https://b", "druhý")));
    EXPECT_FALSE(executor.run(waiting.remove(firstID)));
    for (int turn = 0; turn < 4; ++turn) {
        storage.runUntilIdle();
        executor.runUntilIdle();
    }
    EXPECT_TRUE(waiting.apps().empty());
    EXPECT_EQ(token(firstID), std::nullopt);
    EXPECT_EQ(metadata(), "[]");
}

/// Kept by another version, or by hand.
TEST_F(MacCustomAppsServiceTest, AStoredAppWithoutASourceBehavesAsOneOfThePhone) {
    defaults.set("custom.apps.metadata",
                 toBytes(R"([{"id":"old","name":"Stará","endpoint":"https://old"},)"
                         R"({"id":"odd","name":"Jiná","endpoint":"https://odd","source":"web"}])"));
    restart();
    EXPECT_EQ(service->apps(), (std::vector<AppSummary>{{"old", "Stará", "https://old", true, true},
                                                        {"odd", "Jiná", "https://odd", true, true}}));
    remove("old");
    EXPECT_EQ(ids(), (Ids{"old", "odd"})) << "it cannot be removed here";
    replace({phoneApp("p1")});
    EXPECT_EQ(ids(), Ids{"p1"});
}

TEST_F(MacCustomAppsServiceTest, SwitchesAppsOfBothSourcesAndIgnoresUnknownIds) {
    save({}, "a", "https://a", "");
    replace({phoneApp("p1")});
    setEnabled(firstID, false);
    setEnabled("p1", false);
    restart();
    EXPECT_FALSE(service->apps()[0].enabled);
    EXPECT_FALSE(service->apps()[1].enabled);
    changes = 0;
    setEnabled("unknown", false);
    EXPECT_EQ(changes, 0);
}

TEST_F(MacCustomAppsServiceTest, RemovesAppsOfThisComputerWithTheirTokensAndNoOthers) {
    save({}, "a", "https://a", "t");
    replace({phoneApp("p1")});
    remove("p1");
    remove("unknown");
    EXPECT_EQ(ids(), (Ids{firstID, "p1"}));
    remove(firstID);
    EXPECT_EQ(ids(), Ids{"p1"});
    EXPECT_EQ(token(firstID), std::nullopt);
    EXPECT_EQ(token("p1"), "t");
    restart();
    EXPECT_EQ(ids(), Ids{"p1"});
}

TEST_F(MacCustomAppsServiceTest, DamagedMetadataAreNoApps) {
    for (const char* damaged : {"", "{}", "[{}]", "[", R"([{"id":1,"name":"a","endpoint":"b"}])"}) {
        defaults.set("custom.apps.metadata", toBytes(damaged));
        restart();
        EXPECT_TRUE(service->apps().empty()) << damaged;
    }
}

TEST_F(MacCustomAppsServiceTest, ThePhoneHasNoSayOverAnAppOfThisComputer) {
    save({}, "a", "https://a", "moje");
    replace({phoneApp(firstID, ""), phoneApp("p1", "první"), phoneApp("p1", "druhý")});
    EXPECT_EQ(ids(), (Ids{firstID, "p1"}));
    EXPECT_EQ(token(firstID), "moje");
    EXPECT_EQ(token("p1"), "první");
}

TEST_F(MacCustomAppsServiceTest, AListOfThePhoneIsBounded) {
    std::vector<CompanionCustomApp> list{phoneApp(std::string(5000, 'x'))};
    list.push_back({"long", std::string(5000, 'x'), "https://a", ""});
    list.push_back({"far", "a", "https://a/" + std::string(5000, 'x'), ""});
    for (int i = 0; i < 300; ++i) list.push_back(phoneApp("p" + std::to_string(i), ""));
    replace(list);
    EXPECT_EQ(service->apps().size(), customAppLimits::mostApps);
    EXPECT_EQ(ids().front(), "p0");
}

/// Control letters take six bytes each as JSON writes them.
TEST_F(MacCustomAppsServiceTest, NoListOfThePhoneFillsTheFileOfTheSettings) {
    TemporaryFolder folder;
    ImmediateDefaults settings(folder.path());
    MacCustomAppsService kept(parts.services(settings));
    const std::string full(customAppLimits::longestText / 6, '\1');
    std::vector<CompanionCustomApp> list{{"over", full + '\1', "https://a", ""}};
    for (std::size_t i = 0; i < customAppLimits::mostApps; ++i)
        list.push_back(
            {std::to_string(i) + std::string(60, '\1'), full, "https://a/" + std::string(4000, 'x'), ""});
    EXPECT_TRUE(executor.run(kept.replacePhoneApps(list)));
    EXPECT_EQ(kept.apps().size(), customAppLimits::mostApps);
    settings.set("later", true);
    EXPECT_EQ(settings.problem(), std::nullopt);
    EXPECT_EQ(ImmediateDefaults(folder.path()).boolean("later"), true);
}

TEST_F(MacCustomAppsServiceTest, SwitchingTheIntegrationOffTwiceIsToldTwice) {
    service->setActive(false);
    service->setActive(false);
    EXPECT_EQ(changes, 2);
}

TEST_F(MacCustomAppsServiceTest, SwitchingTheIntegrationOffIsTold) {
    EXPECT_TRUE(service->isActive());
    service->setActive(true);
    EXPECT_EQ(changes, 0);
    service->setActive(false);
    EXPECT_FALSE(service->isActive());
    EXPECT_EQ(changes, 1);
    service->setActive(true);
    EXPECT_EQ(changes, 1);
}

} // namespace
} // namespace morvex
