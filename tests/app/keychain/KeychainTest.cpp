#include "app/keychain/Keychain.h"

#include "platform/memory/ManualExecutor.h"
#include "platform/memory/MemoryVault.h"

#include <gtest/gtest.h>

namespace morvex {
namespace {

class KeychainTest : public testing::Test {
  protected:
    std::optional<std::string> stored(const std::string& account) {
        auto found = vault.items.find({"zz.bramwick.Morvex.mac", account});
        if (found == vault.items.end()) return std::nullopt;
        return std::string(asText(found->second));
    }

    Result<void> save(const std::string& value, const std::string& account) {
        return *executor.run(keychain.save(value, account));
    }

    MemoryVault vault;
    ManualExecutor executor;
    Keychain keychain{vault, executor};
};

TEST_F(KeychainTest, KeepsSecretsByAccountUnderItsOwnService) {
    EXPECT_TRUE(save("tajné", "openai.apiKey"));
    EXPECT_EQ(stored("openai.apiKey"), "tajné");
    EXPECT_EQ(executor.run(keychain.read("openai.apiKey")), std::optional<std::string>("tajné"));
}

TEST_F(KeychainTest, AMissingItemARefusalAndBytesThatAreNoTextReadAsNothing) {
    EXPECT_EQ(executor.run(keychain.read("a")).value(), std::nullopt);
    vault.items[{Keychain::service, "a"}] = {0xff, 0xfe};
    EXPECT_EQ(executor.run(keychain.read("a")).value(), std::nullopt);
    vault.items[{Keychain::service, "a"}] = toBytes("text");
    vault.refusals["find a"] = vaultStatus::interactionNotAllowed;
    EXPECT_EQ(executor.run(keychain.read("a")).value(), std::nullopt);
}

TEST_F(KeychainTest, SavingRemovesFirstAndThenAdds) {
    save("staré", "a").value();
    vault.calls.clear();
    EXPECT_TRUE(save("nové", "a"));
    EXPECT_EQ(vault.calls, (std::vector<std::string>{"remove a", "add a"}));
    EXPECT_EQ(stored("a"), "nové");
}

TEST_F(KeychainTest, SavingAnEmptyValueRemovesTheItemAndSucceeds) {
    save("staré", "a").value();
    EXPECT_TRUE(save("", "a"));
    EXPECT_EQ(stored("a"), std::nullopt);
    EXPECT_TRUE(save("", "a")) << "there is nothing left to remove";
}

TEST_F(KeychainTest, ARefusedSaveTellsTheStatusOfTheVault) {
    vault.refusals["add a"] = vaultStatus::interactionNotAllowed;
    auto saved = save("x", "a");
    ASSERT_FALSE(saved);
    EXPECT_EQ(saved.error().popis().czech(), "Keychain error -25308");
    ASSERT_TRUE(saved.error().as<KeychainError>());
    EXPECT_EQ(saved.error().as<KeychainError>()->status, -25308);
}

TEST_F(KeychainTest, ARefusedRemovalIsNoFailure) {
    vault.refusals["remove a"] = vaultStatus::io;
    EXPECT_TRUE(executor.run(keychain.remove("a")));
    EXPECT_TRUE(save("x", "a"));
}

TEST_F(KeychainTest, WorksOnTheGivenExecutorInTheOrderOfTheCalls) {
    ManualExecutor storage;
    Keychain elsewhere(vault, storage);
    EXPECT_FALSE(executor.run(elsewhere.save("první", "a")));
    EXPECT_FALSE(executor.run(elsewhere.save("druhé", "a")));
    EXPECT_TRUE(vault.calls.empty());
    storage.runUntilIdle();
    executor.runUntilIdle();
    EXPECT_EQ(stored("a"), "druhé");
}

} // namespace
} // namespace morvex
