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

TEST(PhoneSettings, AreUnconfirmedFromAPairingUntilTheMacHasThem) {
    MemoryVault vault;
    PhoneSettings settings(vault, "morvex-phone");
    EXPECT_FALSE(settings.isUnconfirmed());
    EXPECT_TRUE(settings.forgetConfirmation());
    EXPECT_TRUE(settings.forgetConfirmation());
    EXPECT_TRUE(PhoneSettings(vault, "morvex-phone").isUnconfirmed());
    settings.confirm();
    EXPECT_FALSE(settings.isUnconfirmed());
}

TEST(PhoneSettings, ADamagedItemAndARefusalAreFailures) {
    MemoryVault vault;
    PhoneSettings settings(vault, "morvex-phone");
    vault.items[{"morvex-phone", "nastaveni.aplikace"}] = toBytes("{");
    EXPECT_FALSE(settings.apps());
    vault.refusals["find nastaveni.aplikace"] = vaultStatus::io;
    EXPECT_EQ(settings.apps().error().popis(), "Trezor odmítl čtení nastaveni.aplikace: kód -36");
    vault.refusals["update nastaveni.aplikace"] = vaultStatus::io;
    EXPECT_EQ(settings.keep(std::vector<CompanionCustomApp>{}).error().popis(),
              "Trezor odmítl zápis nastaveni.aplikace: kód -36");
}

} // namespace
} // namespace morvex
