#include "shared-apple/KeychainStore.h"

#include "platform/memory/MemoryVault.h"
#include "shared-apple/KeychainChyba.h"
#include "shared/wire/DecodeError.h"
#include "tests/support/Devices.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <chrono>
#include <string>
#include <utility>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using Calls = std::vector<std::string>;

const std::string sluzba = "zz.bramwicks.tolvy";
const std::string signingAccount = "identita.podpisovy";
const std::string agreementAccount = "identita.dohodovy";
const std::string peerAccount = "parovani.protejsek";

class KeychainStoreTest : public testing::Test {
  protected:
    [[nodiscard]] bool holds(const std::string& account) const {
        return vault.items.contains({sluzba, account});
    }

    Bytes& item(const std::string& account) { return vault.items[{sluzba, account}]; }

    Calls takeCalls() { return std::exchange(vault.calls, {}); }

    template <class T> static void expectRefusal(const Result<T>& result, std::int32_t stav, const char* co) {
        ASSERT_FALSE(result);
        auto* chyba = result.error().template as<KeychainChyba>();
        ASSERT_TRUE(chyba);
        EXPECT_EQ(chyba->stav, stav);
        EXPECT_TRUE(chyba->popis().czech().starts_with("Trezor odmítl " + std::string(co) + ": "));
    }

    MemoryVault vault;
    KeychainStore store{vault, sluzba};
    std::shared_ptr<const DeviceIdentity> identita = test::newIdentity();
    PairedPeer protejsek = test::remembered(*test::newIdentity(), DeviceRole::phone);
};

TEST_F(KeychainStoreTest, AnEmptyStoreGivesNothingAndLetsEverythingBeDeleted) {
    EXPECT_EQ(store.nactiIdentitu().value(), nullptr);
    EXPECT_EQ(store.nactiProtejsek().value(), std::nullopt);
    EXPECT_TRUE(store.smazIdentitu());
    EXPECT_TRUE(store.smazProtejsek());
}

TEST_F(KeychainStoreTest, AnIdentityComesBackWithBothKeys) {
    ASSERT_TRUE(store.ulozIdentitu(identita));
    auto read = store.nactiIdentitu().value();
    ASSERT_TRUE(read);
    EXPECT_EQ(read->deviceID(), identita->deviceID());
    EXPECT_EQ(read->signingKey(), identita->signingKey());
    EXPECT_EQ(read->agreementKey(), identita->agreementKey());
}

TEST_F(KeychainStoreTest, KeepsTheRawPrivateKeysUnderTheirAccountsOfTheService) {
    ASSERT_TRUE(store.ulozIdentitu(identita));
    EXPECT_EQ(vault.items.size(), 2U);
    auto podpisovy = identita->podpisovy().exportRaw();
    auto dohodovy = identita->dohodovy().exportRaw();
    EXPECT_TRUE(std::ranges::equal(item(signingAccount), podpisovy.view()));
    EXPECT_TRUE(std::ranges::equal(item(agreementAccount), dohodovy.view()));
}

TEST_F(KeychainStoreTest, TheServiceOfTheIdentityIsNotTheServiceOfTheOtherSecrets) {
    KeychainStore identity(vault, "zz.bramwicks.tolvy");
    KeychainStore others(vault, "zz.bramwick.Morvex.mac");
    ASSERT_TRUE(identity.ulozIdentitu(identita));
    EXPECT_EQ(others.nactiIdentitu().value(), nullptr);
    EXPECT_TRUE(identity.nactiIdentitu().value());
}

TEST_F(KeychainStoreTest, AnotherServiceIsAnotherStore) {
    ASSERT_TRUE(store.ulozIdentitu(identita));
    ASSERT_TRUE(store.ulozProtejsek(protejsek));
    KeychainStore other(vault, "another.service");
    EXPECT_EQ(other.nactiIdentitu().value(), nullptr);
    EXPECT_EQ(other.nactiProtejsek().value(), std::nullopt);
    ASSERT_TRUE(other.smazIdentitu());
    EXPECT_TRUE(store.nactiIdentitu().value());
}

TEST_F(KeychainStoreTest, WritesTheSigningKeyFirstAndAddsWhatItCannotUpdate) {
    ASSERT_TRUE(store.ulozIdentitu(identita));
    EXPECT_EQ(takeCalls(), (Calls{"update identita.podpisovy", "add identita.podpisovy",
                                  "update identita.dohodovy", "add identita.dohodovy"}));
    auto second = test::newIdentity();
    ASSERT_TRUE(store.ulozIdentitu(second));
    EXPECT_EQ(takeCalls(), (Calls{"update identita.podpisovy", "update identita.dohodovy"}));
    EXPECT_EQ(store.nactiIdentitu().value()->deviceID(), second->deviceID());
}

TEST_F(KeychainStoreTest, AnUpdateThatFailsForAnyReasonIsFollowedByAnAdd) {
    for (auto stav : {vaultStatus::interactionNotAllowed, vaultStatus::notAvailable, vaultStatus::io, 7}) {
        vault.items.clear();
        vault.refusals = {{"update parovani.protejsek", stav}};
        EXPECT_TRUE(store.ulozProtejsek(protejsek));
        EXPECT_EQ(takeCalls(), (Calls{"update parovani.protejsek", "add parovani.protejsek"}));
        EXPECT_TRUE(holds(peerAccount));
    }
}

TEST_F(KeychainStoreTest, ARefusedWriteTellsTheStatusOfTheAdd) {
    vault.refusals = {{"update parovani.protejsek", vaultStatus::io},
                      {"add parovani.protejsek", vaultStatus::interactionNotAllowed}};
    expectRefusal(store.ulozProtejsek(protejsek), vaultStatus::interactionNotAllowed,
                  "zápis parovani.protejsek");

    // The item is there, so the add cannot succeed either.
    vault.refusals = {{"update parovani.protejsek", vaultStatus::io}};
    item(peerAccount) = toBytes("old");
    expectRefusal(store.ulozProtejsek(protejsek), vaultStatus::duplicateItem, "zápis parovani.protejsek");
    EXPECT_EQ(item(peerAccount), toBytes("old"));
}

TEST_F(KeychainStoreTest, ARefusedSigningKeyLeavesTheAgreementKeyUntouched) {
    vault.refusals = {{"add identita.podpisovy", vaultStatus::userCanceled}};
    expectRefusal(store.ulozIdentitu(identita), vaultStatus::userCanceled, "zápis identita.podpisovy");
    EXPECT_EQ(takeCalls(), (Calls{"update identita.podpisovy", "add identita.podpisovy"}));
    EXPECT_TRUE(vault.items.empty());
}

TEST_F(KeychainStoreTest, ARefusedAgreementKeyLeavesHalfAnIdentityWhichIsNone) {
    vault.refusals = {{"add identita.dohodovy", vaultStatus::userCanceled}};
    expectRefusal(store.ulozIdentitu(identita), vaultStatus::userCanceled, "zápis identita.dohodovy");
    EXPECT_TRUE(holds(signingAccount));
    EXPECT_EQ(store.nactiIdentitu().value(), nullptr);
}

TEST_F(KeychainStoreTest, HalfAnIdentityIsNone) {
    ASSERT_TRUE(store.ulozIdentitu(identita));
    vault.items.erase({sluzba, signingAccount});
    takeCalls();
    EXPECT_EQ(store.nactiIdentitu().value(), nullptr);
    EXPECT_EQ(takeCalls(), (Calls{"find identita.podpisovy"}));

    ASSERT_TRUE(store.ulozIdentitu(identita));
    vault.items.erase({sluzba, agreementAccount});
    takeCalls();
    EXPECT_EQ(store.nactiIdentitu().value(), nullptr);
    EXPECT_EQ(takeCalls(), (Calls{"find identita.podpisovy", "find identita.dohodovy"}));
}

TEST_F(KeychainStoreTest, ASigningKeyThatIsNoneCountsForNothingWithoutTheAgreementKey) {
    item(signingAccount) = Bytes(5);
    EXPECT_EQ(store.nactiIdentitu().value(), nullptr);
}

TEST_F(KeychainStoreTest, AKeyOfAWrongLengthFailsWithTheWordsOfTheKey) {
    for (const auto& account : {signingAccount, agreementAccount})
        for (std::size_t size : {0U, 31U, 33U, 64U}) {
            ASSERT_TRUE(store.ulozIdentitu(identita));
            item(account) = Bytes(size);
            auto read = store.nactiIdentitu();
            ASSERT_FALSE(read);
            auto* chyba = read.error().as<KryptoChyba>();
            ASSERT_TRUE(chyba);
            EXPECT_EQ(*chyba, (KryptoChyba{KryptoChyba::SpatnaDelkaKlice{32, size}}));
        }
}

TEST_F(KeychainStoreTest, DeletesTheSigningItemFirstAndStopsThereOnARefusal) {
    ASSERT_TRUE(store.ulozIdentitu(identita));
    vault.refusals = {{"remove identita.podpisovy", vaultStatus::io}};
    takeCalls();
    expectRefusal(store.smazIdentitu(), vaultStatus::io, "mazání identita.podpisovy");
    EXPECT_EQ(takeCalls(), (Calls{"remove identita.podpisovy"}));

    vault.refusals.clear();
    ASSERT_TRUE(store.smazIdentitu());
    EXPECT_EQ(takeCalls(), (Calls{"remove identita.podpisovy", "remove identita.dohodovy"}));
    EXPECT_TRUE(vault.items.empty());
}

TEST_F(KeychainStoreTest, ARefusedDeletionNamesItsAccount) {
    vault.refusals = {{"remove identita.dohodovy", vaultStatus::userCanceled},
                      {"remove parovani.protejsek", vaultStatus::io}};
    expectRefusal(store.smazIdentitu(), vaultStatus::userCanceled, "mazání identita.dohodovy");
    expectRefusal(store.smazProtejsek(), vaultStatus::io, "mazání parovani.protejsek");
}

TEST_F(KeychainStoreTest, ARefusedReadNamesItsAccount) {
    ASSERT_TRUE(store.ulozIdentitu(identita));
    vault.refusals = {{"find identita.dohodovy", vaultStatus::interactionNotAllowed}};
    expectRefusal(store.nactiIdentitu(), vaultStatus::interactionNotAllowed, "čtení identita.dohodovy");
    vault.refusals = {{"find identita.podpisovy", vaultStatus::notAvailable}};
    expectRefusal(store.nactiIdentitu(), vaultStatus::notAvailable, "čtení identita.podpisovy");
}

TEST_F(KeychainStoreTest, TellsARefusalInThePlatformsWordsOrByItsCode) {
    vault.refusals = {{"find parovani.protejsek", vaultStatus::interactionNotAllowed}};
    EXPECT_EQ(store.nactiProtejsek().error().popis().czech(),
              "Trezor odmítl čtení parovani.protejsek: kód -25308");
    vault.texts = {{vaultStatus::interactionNotAllowed, "Trezor je zamčený."}};
    EXPECT_EQ(store.nactiProtejsek().error().popis().czech(),
              "Trezor odmítl čtení parovani.protejsek: Trezor je zamčený.");
}

TEST_F(KeychainStoreTest, APeerComesBackConfirmedAtWholeSeconds) {
    protejsek.potvrzeno = dateFromSeconds(1'795'000'000) + 999'999us;
    ASSERT_TRUE(store.ulozProtejsek(protejsek));
    auto read = store.nactiProtejsek().value();
    protejsek.potvrzeno = dateFromSeconds(1'795'000'000);
    EXPECT_EQ(read, protejsek);
}

TEST_F(KeychainStoreTest, DeletingThePeerLeavesTheIdentity) {
    ASSERT_TRUE(store.ulozIdentitu(identita));
    ASSERT_TRUE(store.ulozProtejsek(protejsek));
    ASSERT_TRUE(store.smazProtejsek());
    EXPECT_EQ(store.nactiProtejsek().value(), std::nullopt);
    EXPECT_TRUE(store.nactiIdentitu().value());
}

TEST_F(KeychainStoreTest, ADamagedPeerFails) {
    ASSERT_TRUE(store.ulozProtejsek(protejsek));
    const std::string whole(asText(item(peerAccount)));
    const std::vector<std::string> damaged{
        "", "{}", "null", whole.substr(0, whole.size() / 2),
        std::string(whole).replace(whole.find("\"phone\""), 7, "\"watch\"")};
    for (const auto& text : damaged) {
        item(peerAccount) = toBytes(text);
        auto read = store.nactiProtejsek();
        ASSERT_FALSE(read) << text;
        EXPECT_TRUE(read.error().as<DecodeError>()) << text;
    }
}

} // namespace
} // namespace morvex
