#pragma once

#include <filesystem>
#include <string>

namespace morvex {

/// The computer's name. Sources in order: the pretty name from the system's host name service, the pretty
/// name from its file, the network name. Safe from any thread; a call takes at most half a second.
class HostnamedName {
  public:
    /// Where to look for the names; only tests change the defaults.
    struct Sources {
        std::string systemBus; ///< D-Bus address; empty when there is no bus
        std::filesystem::path machineInfo = "/etc/machine-info";
        std::filesystem::path networkName = "/proc/sys/kernel/hostname";

        static Sources ofThisSystem();
    };

    explicit HostnamedName(Sources sources = Sources::ofThisSystem()) : sources_(std::move(sources)) {}

    /// The name that the user gave the computer, else its network name, else "Mac".
    [[nodiscard]] std::string name() const;

  private:
    [[nodiscard]] std::string nameOnBus() const;
    [[nodiscard]] std::string nameInMachineInfo() const;
    [[nodiscard]] std::string networkName() const;

    Sources sources_;
};

} // namespace morvex
