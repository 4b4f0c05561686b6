#include "tests/platform/linux/PrivateKeyring.h"
#include "tests/support/BusService.h"
#include "tests/support/Household.h"
#include "tests/support/VirtualDisplay.h"

#include <gtest/gtest.h>

#include <chrono>
#include <csignal>

namespace morvex {
namespace {

/// The whole program with a real, locked keyring whose prompt nobody answers.
class LockedKeyringTest : public testing::Test, protected Household {
  protected:
    LockedKeyringTest() {
        keyring.startUnlocked();
        shared["DBUS_SESSION_BUS_ADDRESS"] = keyring.bus().address();
        shared["GSETTINGS_BACKEND"] = "memory";
        {
            auto first = startMac();
            first->type("konec");
            EXPECT_EQ(first->wait(), 0) << first->output();
        }
        keyring.end();
        keyring.startLocked();
        shared["DISPLAY"] = display.name();
        shared["QT_QPA_PLATFORM"] = "xcb";
    }

    VirtualDisplay display;
    PrivateKeyring keyring;
    BusService prompter{keyring.bus().address(), "org.gnome.keyring.SystemPrompter", &BusService::silence};
};

TEST_F(LockedKeyringTest, ASignalEndsTheProgramWhileTheKeyringAsks) {
    for (const auto& arguments : {std::vector<std::string>{}, std::vector<std::string>{"--console"}}) {
        Program mac("morvex", arguments, environment("mac"));
        prompter.waitForCall();
        mac.waitForHandler(SIGTERM);
        mac.signal(SIGTERM);
        EXPECT_EQ(mac.wait(), 0) << mac.output();
    }
}

TEST_F(LockedKeyringTest, TheConsoleSaysWhatItWaitsForAndTakesCommands) {
    Program mac("morvex", {"--console"}, environment("mac"));
    mac.waitForLine("Stav: Čekám na klíče tohoto počítače…");
    mac.type("konec");
    EXPECT_EQ(mac.wait(), 0) << mac.output();
}

} // namespace
} // namespace morvex
