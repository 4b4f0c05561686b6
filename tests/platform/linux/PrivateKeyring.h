#pragma once

#include "platform/linux/SecretServiceVault.h"
#include "tests/support/EnvironmentValue.h"
#include "tests/support/PrivateBus.h"

#include <chrono>
#include <memory>
#include <thread>

namespace morvex {

/// A real keyring on a session bus of the test's own, with its files in a folder that goes with the test.
/// Needs gnome-keyring-daemon.
class PrivateKeyring {
  public:
    /// With the password the daemon opens the user's keyring, or makes it; without it stays locked.
    void startUnlocked() { start({"--unlock"}, "password"); }

    void startLocked() { start({}, ""); }

    void end() { daemon_.reset(); }

    [[nodiscard]] PrivateBus& bus() { return bus_; }

  private:
    void start(std::vector<std::string> options, std::string_view password) {
        std::vector<std::string> command{"gnome-keyring-daemon", "--foreground", "--components=secrets"};
        command.insert(command.end(), options.begin(), options.end());
        auto home = home_.path().string();
        daemon_ = std::make_unique<ChildProgram>(command,
                                                 ChildProgram::Environment{{"HOME", home},
                                                                           {"XDG_DATA_HOME", home},
                                                                           {"XDG_CONFIG_HOME", home},
                                                                           {"XDG_CACHE_HOME", home},
                                                                           {"XDG_RUNTIME_DIR", home}},
                                                 password);
        auto deadline = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!SecretServiceVault({.prompts = SecretServiceVault::Prompts::never}).answers()) {
            require(std::chrono::steady_clock::now() < deadline, "gnome-keyring-daemon does not start");
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
    }

    PrivateBus bus_;
    EnvironmentValue session_{"DBUS_SESSION_BUS_ADDRESS", bus_.address()};
    TemporaryFolder home_;
    std::unique_ptr<ChildProgram> daemon_;
};

} // namespace morvex
