#include "phone/PhoneSettings.h"

#include "platform/memory/MemoryVault.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

TEST(PhoneSettings, AreEmptyBeforeTheFirst) {
    MemoryVault vault;
    PhoneSettings settings(vault, "morvex-phone");
    EXPECT_EQ(settings.preferences().value(), CompanionPreferences{});
    EXPECT_TRUE(settings.apps().value().empty());
}

TEST(PhoneSettings, ReadWhatWasKeptLast) {
    MemoryVault vault;
    PhoneSettings settings(vault, "morvex-phone");
    const CompanionPreferences preferences{"de", "ash", {{{"Domov", "Krátká 2"}}}};
    const std::vector<CompanionCustomApp> apps{{"1", "Počasí", "https://example.com", "tajné"}};
    EXPECT_TRUE(settings.keep(CompanionPreferences{}));
    EXPECT_TRUE(settings.keep(preferences));
    EXPECT_TRUE(settings.keep(apps));
    EXPECT_EQ(settings.preferences().value(), preferences);
    EXPECT_EQ(settings.apps().value(), apps);
}

TEST(PhoneSettings, AreUnconfirmedFromEachChangeUntilTheMacHasThem) {
    using Kind = PhoneSettings::Kind;
    MemoryVault vault;
    PhoneSettings settings(vault, "morvex-phone");
    EXPECT_TRUE(settings.isConfirmed(Kind::preferences));
    EXPECT_TRUE(settings.forgetConfirmations());
    EXPECT_TRUE(settings.isConfirmed(Kind::apps)) << "what was never set no Mac needs";

    EXPECT_TRUE(settings.keep(CompanionPreferences{"de", "", {}}));
    EXPECT_FALSE(settings.isConfirmed(Kind::preferences));
    EXPECT_TRUE(settings.isConfirmed(Kind::apps));
    settings.confirm(Kind::preferences);
    EXPECT_TRUE(settings.isConfirmed(Kind::preferences));
    EXPECT_TRUE(settings.forgetConfirmations());
    EXPECT_TRUE(settings.forgetConfirmations());
    EXPECT_FALSE(PhoneSettings(vault, "morvex-phone").isConfirmed(Kind::preferences));

    EXPECT_TRUE(settings.keep(std::vector<CompanionCustomApp>{}));
    EXPECT_FALSE(settings.isConfirmed(Kind::apps)) << "that there are none any more is news too";
}

TEST(PhoneSettings, ADamagedItemAndARefusalAreFailures) {
    MemoryVault vault;
    PhoneSettings settings(vault, "morvex-phone");
    vault.items[{"morvex-phone", "nastaveni.aplikace"}] = toBytes("{");
    EXPECT_FALSE(settings.apps());
    vault.refusals["find nastaveni.aplikace"] = vaultStatus::io;
    EXPECT_EQ(settings.apps().error().popis().czech(), "Trezor odmítl čtení nastaveni.aplikace: kód -36");
    vault.refusals["update nastaveni.aplikace"] = vaultStatus::io;
    vault.refusals["add nastaveni.aplikace"] = vaultStatus::io;
    EXPECT_EQ(settings.keep(std::vector<CompanionCustomApp>{}).error().popis().czech(),
              "Trezor odmítl zápis nastaveni.aplikace: kód -36");
}

} // namespace
} // namespace morvex
