#pragma once

#include "platform/memory/ManualClock.h"
#include "platform/memory/ScriptedRandom.h"
#include "platform/memory/ScriptedSockets.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/trust/SecureChannel.h"
#include "shared/wire/MacPayload.h"
#include "shared/wire/PairedPeer.h"
#include "shared/wire/RelayMessage.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// Plays a phone and its relay at the other end of a scripted socket. The test runs the executor between
/// calls.
class ScriptedPhone {
  public:
    struct Received {
        MacPayload payload;
        std::string requestID;
    };

    explicit ScriptedPhone(ManualClock& clock) : clock_(clock) {}

    /// The record that the computer stores about this phone.
    [[nodiscard]] PairedPeer asPeer(const std::string& relayURL = "http://relay.example") const;

    /// Uses this socket as the relay's end from now on; the computer at the other end is `mac`.
    void attach(std::shared_ptr<ScriptedSocket> socket, const DeviceIdentity& mac);

    /// Plays the relay's part of a login.
    void logIn(bool phoneIsOnline = true);
    /// Plays a relay that refuses the login.
    void refuseLogin(RelayFailure code, const std::string& detail);
    /// Answers the computer's hello, so that both have a session.
    void exchangeHellos();

    void deliver(RelayMessage message);
    /// Plays the relay's answer to all waiting pings.
    void pong();
    /// Seals a message without sending it.
    Envelope seal(const MacPayload& payload, std::string requestID);
    void send(MacPayload payload, std::string requestID);
    void call(std::string tool, std::string argumentsJSON, std::string requestID);

    /// The computer's messages since the last call, opened.
    std::vector<Received> take();
    /// The computer's envelopes since the last call.
    std::vector<Envelope> takeEnvelopes();

    const DeviceIdentity identity = DeviceIdentity::generate();
    PairID pair{"PAIR"};

  private:
    ManualClock& clock_;
    ScriptedRandom random_;
    std::shared_ptr<ScriptedSocket> socket_;
    std::optional<PairedPeer> mac_;
    std::optional<SecureChannel> channel_;
    std::size_t taken_ = 0;
};

} // namespace morvex
