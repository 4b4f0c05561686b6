#pragma once

#include "tests/support/Program.h"
#include "tests/support/TemporaryFolder.h"

#include <boost/json/object.hpp>

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
    /// Ends the relay and starts it again with the same port and database.
    void restartRelay();

    /// A companion in the home of this name.
    std::unique_ptr<Program> startMac(const std::string& home = "mac",
                                      Program::Input input = Program::Input::pipe);
    /// Runs one command of the phone.
    Ended phone(std::vector<std::string> arguments, const std::string& input = "");

    /// Calls a tool from the phone.
    Ended call(const std::string& tool, const boost::json::object& arguments,
               std::vector<std::string> options = {});
    /// What a call that works answers.
    boost::json::object answerOf(const std::string& tool, const boost::json::object& arguments);

    /// Pairs phone and computer; returns the number that both have shown.
    std::string pair(Program& mac);
    /// Creates a folder in the computer's home and allows it. Returns its path.
    std::string allow(Program& mac, const std::string& name);

    /// The file in which a computer without a bus stores its paired phone.
    [[nodiscard]] std::filesystem::path peerFile() const;

    Program::Environment environment(const std::string& home);

    /// Variables for every program; those of its home take precedence.
    Program::Environment shared;
    TemporaryFolder temporary;
    std::string relayAddress;
    std::unique_ptr<Program> relay;
};

} // namespace morvex
