#pragma once

#include "phone/Phone.h"
#include "platform/memory/FixedLocalTime.h"
#include "platform/memory/ManualClock.h"
#include "platform/memory/ManualExecutor.h"
#include "platform/memory/MemoryVault.h"
#include "platform/memory/ScriptedHttp.h"
#include "platform/memory/ScriptedRandom.h"
#include "platform/memory/ScriptedSockets.h"
#include "shared-apple/PametoveUloziste.h"
#include "tests/phone/ScriptedMac.h"
#include "tests/support/ScriptedKeyboard.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <initializer_list>
#include <memory>
#include <optional>
#include <sstream>
#include <string>
#include <vector>

namespace morvex {

/// The whole program between scripted ends: a relay with a Mac, a keyboard, and two texts for its output.
class PhoneFixture : public testing::Test {
  protected:
    ~PhoneFixture() override;

    /// Starts a command line and lets it run as far as it gets.
    void start(std::vector<const char*> arguments);

    void run() { executor.runUntilIdle(); }

    void pass(Clock::Duration time);

    /// Stores a pairing, so that session commands can start.
    void paired();
    /// Starts a command in a session that stands, with the Mac's status told.
    void startInSession(std::vector<const char*> arguments);
    /// The relay accepts the phone's login, and the Mac answers its hello.
    void meet();
    /// Starts a pairing by `--yes` or by question; the relay lets the phone join.
    void startPairing(std::initializer_list<const char*> arguments, bool macIsOnline = true);
    void send(MacPayload payload, std::string requestID);
    /// The Mac has handled everything so far. Gives how often it was asked.
    std::size_t reachMilestones();

    [[nodiscard]] MacStatus status() const;
    [[nodiscard]] ApprovalRequest approval(std::string tool) const;

    ManualExecutor executor;
    ManualClock clock;
    ScriptedSockets sockets;
    ScriptedHttp http;
    FixedLocalTime localTime;
    ScriptedRandom random;
    PametoveUloziste store;
    MemoryVault vault;
    PhoneSettings settings{vault, "morvex-phone"};
    TemporaryFolder folder;
    PhoneTasks tasks = PhoneTasks::load(folder.path());
    PhoneRecords records = PhoneRecords::load(folder.path(), clock, random);
    std::stop_source interruption;
    Inbox inbox{clock, interruption.get_token()};
    ScriptedKeyboard keyboard{inbox};
    std::ostringstream out;
    std::ostringstream err;
    Terminal terminal{{out}, {err}};
    std::shared_ptr<const DeviceIdentity> identita =
        std::make_shared<const DeviceIdentity>(DeviceIdentity::generate());
    ScriptedMac mac{clock};
    std::shared_ptr<ScriptedSocket> socket;
    std::unique_ptr<Phone> phone;
    std::optional<ExitCode> ended; ///< once the command has
};

} // namespace morvex
