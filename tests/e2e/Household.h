#pragma once

#include "tests/e2e/Program.h"
#include "tests/support/TemporaryFolder.h"

#include <filesystem>
#include <memory>
#include <string>
#include <vector>

namespace morvex {

/// A relay on a free port, and homes for computers and phones, without display and bus.
class Household {
  public:
    Household();

    void startRelay();
    /// Ends the relay and starts it again on the same port and database.
    void restartRelay();

    /// A companion in the home of this name.
    std::unique_ptr<Program> startMac(const std::string& home = "mac");
    /// Runs one command of the phone.
    Ended phone(std::vector<std::string> arguments, const std::string& input = "");

    /// Pairs phone and computer; both have shown the number that it gives.
    std::string pair(Program& mac);
    /// Makes a folder in the computer's home and allows it. Gives its path.
    std::string allow(Program& mac, const std::string& name);

    /// Where a computer without a bus keeps the phone that it is paired with.
    [[nodiscard]] std::filesystem::path peerFile() const;

    Program::Environment environment(const std::string& home);

    /// For every program, before what its home gives it.
    Program::Environment shared;
    TemporaryFolder temporary;
    std::string relayAddress;
    std::unique_ptr<Program> relay;
};

} // namespace morvex
