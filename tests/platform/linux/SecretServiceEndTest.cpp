#include "platform/linux/SecretServiceVault.h"
#include "tests/platform/linux/PrivateKeyring.h"
#include "tests/support/BusService.h"

#include <gtest/gtest.h>

#include <atomic>
#include <string_view>
#include <thread>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using Prompts = SecretServiceVault::Prompts;

const std::string service = "zz.example.service";

/// A locked keyring whose question nobody answers.
class SecretServiceEndTest : public testing::Test {
  protected:
    SecretServiceEndTest() {
        keyring.startUnlocked();
        SecretServiceVault unlocked({.prompts = Prompts::never});
        EXPECT_EQ(unlocked.add(service, "account", asBytes("secret")), vaultStatus::ok);
        keyring.end();
        keyring.startLocked();
    }

    std::int32_t find() { return vault.find(service, "account").status; }

    void waitForQuestions(int wanted) const {
        for (int asked = questions; asked < wanted; asked = questions) questions.wait(asked);
    }

    PrivateKeyring keyring;
    std::atomic_int questions = 0;
    BusService prompter{keyring.bus().address(), "org.gnome.keyring.SystemPrompter",
                        [this](GDBusMessage* call) -> GDBusMessage* {
                            if (g_dbus_message_get_member(call) != std::string_view("BeginPrompting"))
                                return nullptr;
                            ++questions;
                            questions.notify_all();
                            return nullptr;
                        }};
    SecretServiceVault vault{{.prompts = Prompts::allowed, .timeLimit = 1h}};
};

TEST_F(SecretServiceEndTest, AQuestionThatIsTakenBackLeavesTheVaultLockedAndItMayBeAskedAgain) {
    for (int question = 1; question <= 2; ++question) {
        std::thread asking([this] { EXPECT_EQ(find(), vaultStatus::interactionNotAllowed); });
        waitForQuestions(question);
        vault.stopAsking();
        asking.join();
    }
}

TEST_F(SecretServiceEndTest, AtTheEndAQuestionEndsAndNoOtherOneIsAsked) {
    std::thread asking([this] { EXPECT_EQ(find(), vaultStatus::interactionNotAllowed); });
    waitForQuestions(1);
    vault.end();
    asking.join();
    EXPECT_EQ(find(), vaultStatus::interactionNotAllowed);
    vault.stopAsking();
    EXPECT_EQ(find(), vaultStatus::interactionNotAllowed) << "for good";
}

TEST(SecretServiceEnd, AServiceThatNeverAnswersIsNotWaitedForAtTheEnd) {
    PrivateBus bus;
    EnvironmentValue session("DBUS_SESSION_BUS_ADDRESS", bus.address());
    BusService silent(bus.address(), "org.freedesktop.secrets", &BusService::silence);
    SecretServiceVault vault({.prompts = Prompts::never, .timeLimit = 1h});
    std::thread ending([&] {
        silent.waitForCall();
        vault.end();
    });
    EXPECT_EQ(vault.find(service, "account").status, vaultStatus::notAvailable);
    ending.join();
}

} // namespace
} // namespace morvex
