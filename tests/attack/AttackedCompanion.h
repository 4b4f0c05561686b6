#pragma once

#include "platform/linux/SystemRandom.h"
#include "tests/attack/HostileRelay.h"
#include "tests/attack/MemoryMeter.h"
#include "tests/shared-apple/Devices.h"
#include "tests/shared-apple/PhoneDevice.h"
#include "tests/support/RealCompanion.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <memory>
#include <set>
#include <string>
#include <thread>
#include <vector>

namespace morvex {

/// A companion that was paired before, whose relay is the test. The test attacks; at its end the fixture sees
/// to it that nothing was done in the phone's name, that the memory stayed small, and that the companion
/// serves its phone again as soon as the relay behaves.
class AttackedCompanion : public testing::Test {
  protected:
    AttackedCompanion();
    void TearDown() override;

    /// The next connection of the companion; its waits are moved on until it comes.
    std::unique_ptr<HostileRelay::Line> connect();
    /// The relay's part of an honest login.
    std::unique_ptr<HostileRelay::Line> logIn(bool phoneIsOnline = true);
    /// The same, and an exchange of hellos: the phone has a session then.
    std::unique_ptr<HostileRelay::Line> secure();

    /// Forwards an envelope.
    static void forward(HostileRelay::Line& line, Envelope envelope) {
        line.say(RelayMessage::Forward{std::move(envelope)});
    }

    /// Calls a tool as the phone does. The JSON of the answer, empty when the connection ended before.
    std::string call(HostileRelay::Line& line, const std::string& tool, const std::string& argumentsJSON);
    /// What became of all that was sent on this line: whether the companion still serves it, after everything
    /// before has been judged. False when the companion has ended the connection.
    bool isServed(HostileRelay::Line& line);
    /// The next answer to a call of the phone.
    std::string nextAnswer(HostileRelay::Line& line);
    /// The answers to a call of `mac.status` and to all calls before it.
    std::vector<std::string> answersUntilStatus(HostileRelay::Line& line);
    /// A sealed call that would write this file.
    Envelope writeOf(const std::string& name);

    /// What the companion shows its user as the trouble.
    std::string trouble();
    /// Waits until that begins so.
    void untilTrouble(const std::string& beginning);
    /// Takes away what it shows.
    void forgetTrouble();

    TemporaryFolder temporary; ///< the folder that is allowed
    TemporaryFolder home;      ///< where the companion keeps its records
    HostileRelay relay;
    SystemRandom random;
    std::shared_ptr<const DeviceIdentity> identity = test::newIdentity();
    ManualClock phoneClock;
    test::PhoneDevice phone{random, phoneClock, identity->deviceID()};
    std::unique_ptr<RealCompanion> mac;
    std::unique_ptr<MemoryMeter> memory;
    /// The files that calls of the phone have written and no others.
    std::set<std::string> written;

    /// For the line that is told: how many attacks it were, and what the test has counted.
    std::size_t tries = 1;
    std::string counted = "nothing gained";
    /// Challenges that the companion has answered while a test waited for something else.
    std::size_t signatures = 0;

  private:
    PairedPeer peer() const;
    [[nodiscard]] std::set<std::string> files() const;
    void expectRecovery();

    /// Ends the program when an attack makes something wait for ever.
    std::jthread watchdog_;
};

} // namespace morvex
