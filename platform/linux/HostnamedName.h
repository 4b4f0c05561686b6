#pragma once

#include <filesystem>
#include <string>

namespace morvex {

/// The computer's name: the pretty one from the system's host name service, the pretty one from its file, the
/// network name. Safe from any thread; a call lasts half a second at most.
class HostnamedName {
  public:
    /// Where the names come from; other values than the system's own are for tests.
    struct Sources {
        std::string systemBus; ///< D-Bus address; empty when there is no bus
        std::filesystem::path machineInfo = "/etc/machine-info";
        std::filesystem::path networkName = "/proc/sys/kernel/hostname";

        static Sources ofThisSystem();
    };

    explicit HostnamedName(Sources sources = Sources::ofThisSystem()) : sources_(std::move(sources)) {}

    /// The name that a person gave the computer, else its network name, else "Mac".
    [[nodiscard]] std::string name() const;

  private:
    [[nodiscard]] std::string nameOnBus() const;
    [[nodiscard]] std::string nameInMachineInfo() const;
    [[nodiscard]] std::string networkName() const;

    Sources sources_;
};

} // namespace morvex
