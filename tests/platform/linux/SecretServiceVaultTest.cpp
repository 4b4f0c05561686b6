#include "platform/linux/SecretServiceVault.h"

#include "platform/posix/VaultRules.h"
#include "tests/platform/linux/PrivateKeyring.h"
#include "tests/support/BusService.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using Prompts = SecretServiceVault::Prompts;

const std::string service = "zz.example.service";
const Bytes binary = {0, 1, 255, 10, 0};
const SecretServiceVault::Settings withoutPrompts{.prompts = Prompts::never};
const SecretServiceVault::Settings withPrompts{.prompts = Prompts::allowed};

TEST(SecretServiceVault, KeepsBinarySecretsOverARestartOfTheKeyring) {
    PrivateKeyring keyring;
    keyring.startUnlocked();
    SecretServiceVault vault(withoutPrompts);
    ASSERT_EQ(vault.add(service, "account", binary), vaultStatus::ok);
    EXPECT_EQ(vault.add(service, "empty", {}), vaultStatus::ok);
    keyring.end();
    keyring.startUnlocked();
    auto found = vault.find(service, "account");
    EXPECT_EQ(found.status, vaultStatus::ok);
    EXPECT_EQ(found.bytes, binary);
    EXPECT_EQ(vault.find(service, "empty").status, vaultStatus::ok);
}

TEST(SecretServiceVault, UpdatesAddsAndRemovesOnlyWhatFits) {
    PrivateKeyring keyring;
    keyring.startUnlocked();
    SecretServiceVault vault(withoutPrompts);
    EXPECT_EQ(vault.find(service, "account").status, vaultStatus::itemNotFound);
    EXPECT_EQ(vault.update(service, "account", binary), vaultStatus::itemNotFound);
    EXPECT_EQ(vault.remove(service, "account"), vaultStatus::itemNotFound);
    EXPECT_EQ(vault.add(service, "account", asBytes("one")), vaultStatus::ok);
    EXPECT_EQ(vault.add(service, "account", binary), vaultStatus::duplicateItem);
    EXPECT_EQ(vault.update(service, "account", asBytes("two")), vaultStatus::ok);
    EXPECT_EQ(vault.find(service, "account").bytes, toBytes("two"));
    EXPECT_EQ(vault.remove(service, "account"), vaultStatus::ok);
    EXPECT_EQ(vault.find(service, "account").status, vaultStatus::itemNotFound);
}

TEST(SecretServiceVault, ServiceAndAccountTogetherNameAnItem) {
    PrivateKeyring keyring;
    keyring.startUnlocked();
    SecretServiceVault vault(withoutPrompts);
    ASSERT_EQ(vault.add(service, "a", asBytes("1")), vaultStatus::ok);
    ASSERT_EQ(vault.add(service, "b", asBytes("2")), vaultStatus::ok);
    ASSERT_EQ(vault.add("zz.other", "a", asBytes("3")), vaultStatus::ok);
    EXPECT_EQ(vault.remove(service, "a"), vaultStatus::ok);
    EXPECT_EQ(vault.find(service, "a").status, vaultStatus::itemNotFound);
    EXPECT_EQ(vault.find(service, "b").bytes, toBytes("2"));
    EXPECT_EQ(vault.find("zz.other", "a").bytes, toBytes("3"));
}

TEST(SecretServiceVault, RefusesNamesAndSizesThatItCannotKeep) {
    PrivateKeyring keyring;
    keyring.startUnlocked();
    SecretServiceVault vault(withoutPrompts);
    for (const auto& name : {std::string(), std::string("a\0b", 3), std::string("\xff")})
        EXPECT_EQ(vault.add(service, name, binary), vaultStatus::io);
    EXPECT_EQ(vault.add(service, "large", Bytes(vaultRules::itemLimit + 1)), vaultStatus::io);
    EXPECT_EQ(vault.add(service, "largest", Bytes(vaultRules::itemLimit)), vaultStatus::ok);
    EXPECT_EQ(vault.find(service, "largest").bytes.size(), vaultRules::itemLimit);
}

TEST(SecretServiceVault, ALockedItemIsNotAnAbsentOne) {
    PrivateKeyring keyring;
    keyring.startUnlocked();
    SecretServiceVault vault(withoutPrompts);
    ASSERT_EQ(vault.add(service, "account", binary), vaultStatus::ok);
    keyring.end();
    keyring.startLocked();
    EXPECT_EQ(vault.find(service, "account").status, vaultStatus::interactionNotAllowed);
    EXPECT_EQ(vault.update(service, "account", binary), vaultStatus::interactionNotAllowed);
    EXPECT_EQ(vault.remove(service, "account"), vaultStatus::interactionNotAllowed);
    EXPECT_EQ(vault.add(service, "account", binary), vaultStatus::duplicateItem);
    EXPECT_EQ(vault.add(service, "another", binary), vaultStatus::interactionNotAllowed);
    EXPECT_EQ(vault.find(service, "missing").status, vaultStatus::itemNotFound);
}

TEST(SecretServiceVault, AKeyringThatNobodyMayBeAskedToMakeIsLocked) {
    PrivateKeyring keyring;
    keyring.startLocked();
    SecretServiceVault vault(withoutPrompts);
    EXPECT_EQ(vault.find(service, "account").status, vaultStatus::itemNotFound);
    EXPECT_EQ(vault.add(service, "account", binary), vaultStatus::interactionNotAllowed);
}

TEST(SecretServiceVault, APromptThatIsClosedCancels) {
    PrivateKeyring keyring;
    keyring.startUnlocked();
    ASSERT_EQ(SecretServiceVault(withoutPrompts).add(service, "account", binary), vaultStatus::ok);
    keyring.end();
    keyring.startLocked();
    // Without a program that could show it, the keyring closes its prompt at once.
    SecretServiceVault vault(withPrompts);
    EXPECT_EQ(vault.find(service, "account").status, vaultStatus::userCanceled);
    EXPECT_EQ(vault.add(service, "another", binary), vaultStatus::userCanceled);
}

TEST(SecretServiceVault, APromptThatNobodyAnswersEndsWithTheTimeLimit) {
    PrivateKeyring keyring;
    keyring.startUnlocked();
    ASSERT_EQ(SecretServiceVault(withoutPrompts).add(service, "account", binary), vaultStatus::ok);
    keyring.end();
    keyring.startLocked();
    BusService prompter(keyring.bus().address(), "org.gnome.keyring.SystemPrompter", &BusService::silence);
    auto settings = withPrompts;
    settings.timeLimit = 1s;
    EXPECT_EQ(SecretServiceVault(settings).find(service, "account").status,
              vaultStatus::interactionNotAllowed);
}

TEST(SecretServiceVault, AServiceThatVanishedIsNotAvailableUntilItIsBack) {
    PrivateKeyring keyring;
    keyring.startUnlocked();
    SecretServiceVault vault(withoutPrompts);
    ASSERT_EQ(vault.add(service, "account", binary), vaultStatus::ok);
    keyring.end();
    EXPECT_FALSE(vault.answers());
    EXPECT_EQ(vault.find(service, "account").status, vaultStatus::notAvailable);
    EXPECT_EQ(vault.update(service, "account", binary), vaultStatus::notAvailable);
    EXPECT_EQ(vault.add(service, "account", binary), vaultStatus::notAvailable);
    EXPECT_EQ(vault.remove(service, "account"), vaultStatus::notAvailable);
    keyring.startUnlocked();
    EXPECT_EQ(vault.find(service, "account").bytes, binary);
}

TEST(SecretServiceVault, ServesSeveralThreads) {
    PrivateKeyring keyring;
    keyring.startUnlocked();
    SecretServiceVault vault(withoutPrompts);
    std::vector<std::thread> threads;
    for (const char* account : {"a", "b", "c", "d"})
        threads.emplace_back([&vault, account] {
            EXPECT_EQ(vault.add(service, account, asBytes(account)), vaultStatus::ok);
            EXPECT_EQ(vault.find(service, account).bytes, toBytes(account));
        });
    for (auto& thread : threads) thread.join();
}

TEST(SecretServiceVault, ABusThatEndsTakesNothingWithIt) {
    PrivateKeyring keyring;
    keyring.startUnlocked();
    SecretServiceVault vault(withoutPrompts);
    ASSERT_EQ(vault.find(service, "account").status, vaultStatus::itemNotFound);
    keyring.bus().end();
    EXPECT_EQ(vault.find(service, "account").status, vaultStatus::notAvailable);
}

TEST(SecretServiceVault, AServiceThatNeverAnswersIsNotWaitedForLongerThanTheLimit) {
    PrivateBus bus;
    EnvironmentValue session("DBUS_SESSION_BUS_ADDRESS", bus.address());
    BusService silent(bus.address(), "org.freedesktop.secrets", &BusService::silence);
    SecretServiceVault vault({.prompts = Prompts::never, .timeLimit = 200ms});
    EXPECT_FALSE(vault.answers());
    EXPECT_EQ(vault.find(service, "account").status, vaultStatus::notAvailable);
}

TEST(SecretServiceVault, ABusThatTheEnvironmentDoesNotNameIsNotLookedFor) {
    PrivateKeyring keyring;
    keyring.startUnlocked();
    EnvironmentValue runtime("XDG_RUNTIME_DIR", keyring.bus().folder().string());
    SecretServiceVault vault(withoutPrompts);
    EXPECT_TRUE(vault.answers());
    EnvironmentValue session("DBUS_SESSION_BUS_ADDRESS", std::nullopt);
    EXPECT_FALSE(vault.answers());
    EXPECT_EQ(vault.find(service, "account").status, vaultStatus::notAvailable);
}

TEST(SecretServiceVault, NobodyIsAskedWhereThereIsNoDisplay) {
    EnvironmentValue x11("DISPLAY", std::nullopt);
    EnvironmentValue wayland("WAYLAND_DISPLAY", "");
    EXPECT_EQ(SecretServiceVault::Settings::ofThisSession().prompts, Prompts::never);
    EnvironmentValue display("DISPLAY", ":0");
    EXPECT_EQ(SecretServiceVault::Settings::ofThisSession().prompts, Prompts::allowed);
}

TEST(SecretServiceVault, WithoutABusThereIsNoService) {
    for (const char* address : {"", "autolaunch:", "unix:path=/nonexistent/bus;autolaunch:", "nonsense",
                                "unix:path=/nonexistent/bus"}) {
        EnvironmentValue session("DBUS_SESSION_BUS_ADDRESS", address);
        SecretServiceVault vault(withoutPrompts);
        EXPECT_FALSE(vault.answers()) << address;
        EXPECT_EQ(vault.find(service, "account").status, vaultStatus::notAvailable) << address;
    }
}

} // namespace
} // namespace morvex
