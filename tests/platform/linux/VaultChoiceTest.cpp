#include "platform/linux/VaultChoice.h"

#include "platform/posix/base/AtomicFile.h"
#include "tests/platform/linux/PrivateKeyring.h"

#include <gtest/gtest.h>

#include <cerrno>

namespace morvex {
namespace {

const std::string service = "zz.example.service";
const Bytes secret = {1, 2, 3};
const SecretServiceVault::Settings withoutPrompts{.prompts = SecretServiceVault::Prompts::never};

class VaultChoiceTest : public testing::Test {
  protected:
    [[nodiscard]] std::string remembered() const {
        auto bytes = readWhole(memory_, 100);
        return bytes && *bytes ? std::string(asText(**bytes)) : "nothing";
    }

    VaultChoice choice() { return VaultChoice(folder_.path(), withoutPrompts); }

    EnvironmentValue noBus_{"DBUS_SESSION_BUS_ADDRESS", std::nullopt};
    TemporaryFolder folder_;
    std::filesystem::path memory_ = folder_.path() / "Morvex" / "vault-backend";
};

TEST_F(VaultChoiceTest, TakesFilesWhereThereIsNoService) {
    auto vault = choice();
    EXPECT_EQ(remembered(), "nothing");
    EXPECT_EQ(vault.add(service, "account", secret), vaultStatus::ok);
    EXPECT_EQ(remembered(), "files");
    EXPECT_EQ(vault.place(), SecretVault::Place::privateFiles);
    EXPECT_EQ(FileVault(folder_.path()).find(service, "account").bytes, secret);
}

TEST_F(VaultChoiceTest, TakesTheServiceWhereOneAnswers) {
    PrivateKeyring keyring;
    keyring.startUnlocked();
    auto vault = choice();
    EXPECT_EQ(vault.find(service, "account").status, vaultStatus::itemNotFound);
    EXPECT_EQ(remembered(), "secret-service");
    EXPECT_EQ(vault.place(), SecretVault::Place::keyring);
    EXPECT_EQ(vault.add(service, "account", secret), vaultStatus::ok);
    EXPECT_EQ(vault.update(service, "account", secret), vaultStatus::ok);
    EXPECT_EQ(SecretServiceVault(withoutPrompts).find(service, "account").bytes, secret);
    EXPECT_FALSE(FileVault(folder_.path()).hasItems());
    EXPECT_EQ(vault.remove(service, "account"), vaultStatus::ok);
}

TEST_F(VaultChoiceTest, AServiceThatWasChosenIsNeverReplacedByFiles) {
    ASSERT_TRUE(writeAtomically(memory_, asBytes("secret-service")));
    auto vault = choice();
    EXPECT_EQ(vault.find(service, "account").status, vaultStatus::notAvailable);
    EXPECT_EQ(vault.add(service, "account", secret), vaultStatus::notAvailable);
    EXPECT_FALSE(FileVault(folder_.path()).hasItems());
    EXPECT_EQ(vault.text(vaultStatus::notAvailable), "trezor není dostupný");
}

TEST_F(VaultChoiceTest, FilesThatWereChosenAreNeverReplacedByAService) {
    PrivateKeyring keyring;
    keyring.startUnlocked();
    ASSERT_TRUE(writeAtomically(memory_, asBytes("files\n")));
    auto vault = choice();
    EXPECT_EQ(vault.add(service, "account", secret), vaultStatus::ok);
    EXPECT_TRUE(FileVault(folder_.path()).hasItems());
}

TEST_F(VaultChoiceTest, FilesThatAreThereAlreadyAreTheVaultEvenBesideAService) {
    PrivateKeyring keyring;
    keyring.startUnlocked();
    ASSERT_EQ(FileVault(folder_.path()).add(service, "account", secret), vaultStatus::ok);
    auto vault = choice();
    EXPECT_EQ(vault.find(service, "account").bytes, secret);
    EXPECT_EQ(remembered(), "files");
}

TEST_F(VaultChoiceTest, AServiceThatDoesNotAnswerAtTheEndOfTheProgramDecidesNothing) {
    auto vault = choice();
    vault.end();
    EXPECT_EQ(vault.find(service, "account").status, vaultStatus::notAvailable);
    EXPECT_EQ(remembered(), "nothing");
}

TEST_F(VaultChoiceTest, AMemoryThatSaysSomethingElseChoosesNothing) {
    for (const auto& text : {std::string(), std::string("keychain"), std::string("files and more")}) {
        ASSERT_TRUE(writeAtomically(memory_, asBytes(text)));
        auto vault = choice();
        EXPECT_EQ(vault.add(service, "account", secret), vaultStatus::notAvailable);
        EXPECT_EQ(vault.update(service, "account", secret), vaultStatus::notAvailable);
        EXPECT_EQ(vault.remove(service, "account"), vaultStatus::notAvailable);
        EXPECT_EQ(remembered(), text);
    }
}

TEST_F(VaultChoiceTest, AChoiceThatCannotBeRememberedIsNotMade) {
    std::filesystem::create_directories(memory_);
    auto vault = choice();
    EXPECT_EQ(vault.add(service, "account", secret), vaultStatus::posixBase + EINVAL);
    EXPECT_FALSE(FileVault(folder_.path()).hasItems());
}

} // namespace
} // namespace morvex
