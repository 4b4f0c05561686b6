#pragma once

#include "tests/attack/HostileRelay.h"
#include "tests/attack/MemoryMeter.h"
#include "tests/support/Devices.h"
#include "tests/support/PhoneDevice.h"
#include "tests/support/RealCompanion.h"
#include "tests/support/TemporaryFolder.h"

#include MORVEX_BASICS

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace morvex {

/// An already paired companion whose relay is the test. The test attacks; at its end the fixture checks that
/// nothing was done in the phone's name, that memory use stayed small, and that the companion serves its
/// phone again when the relay behaves.
class AttackedCompanion : public testing::Test {
  protected:
    AttackedCompanion();
    void TearDown() override;

    /// The next connection of the companion; its time is advanced until it connects.
    std::unique_ptr<HostileRelay::Line> connect();
    /// The relay's part of an honest login.
    std::unique_ptr<HostileRelay::Line> logIn(bool phoneIsOnline = true);
    /// Like `logIn`, with an exchange of hellos, so that the phone has a session.
    std::unique_ptr<HostileRelay::Line> secure();

    /// Forwards an envelope.
    static void forward(HostileRelay::Line& line, Envelope envelope) {
        line.say(RelayMessage::Forward{std::move(envelope)});
    }

    /// Calls a tool as the phone does. The JSON of the answer, empty when the connection ended before.
    std::string call(HostileRelay::Line& line, const std::string& tool, const std::string& argumentsJSON);
    /// Waits until everything sent on this line has been handled. Returns false if the companion has ended
    /// the connection.
    bool isServed(HostileRelay::Line& line);
    /// The next answer to a call of the phone.
    std::string nextAnswer(HostileRelay::Line& line);
    /// The answers up to that of a new call of `mac.status`.
    std::vector<std::string> answersUntilStatus(HostileRelay::Line& line);
    /// A sealed call that would write a file of this name.
    Envelope writeOf(const std::string& name);

    /// The trouble that the companion shows its user.
    std::string trouble();
    /// Waits until the shown trouble begins with this text.
    void untilTrouble(const std::string& beginning);
    /// Clears the shown trouble.
    void forgetTrouble();

    TemporaryFolder temporary; ///< the allowed folder
    TemporaryFolder home;      ///< the home folder with the companion's records
    HostileRelay relay;
    SystemRandom random;
    std::shared_ptr<const DeviceIdentity> identity = test::newIdentity();
    ManualClock phoneClock;
    test::PhoneDevice phone{random, phoneClock, identity->deviceID()};
    std::unique_ptr<RealCompanion> mac;
    std::unique_ptr<MemoryMeter> memory;
    /// The only files that calls of the phone are expected to have written.
    std::set<std::string> written;

    /// For the reported line: the number of attacks, and what the test has counted.
    std::size_t tries = 1;
    std::string counted = "nothing gained";
    /// Challenges that the companion has answered while a test waited for something else.
    std::size_t signatures = 0;

  private:
    PairedPeer peer() const;
    [[nodiscard]] std::set<std::string> files() const;
    void expectRecovery();

    /// Ends the program if an attack blocks something forever.
    std::jthread watchdog_;
};

} // namespace morvex
