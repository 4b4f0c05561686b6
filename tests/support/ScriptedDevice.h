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

/// Plays one device of a pair, and the relay before it, at the other end of a scripted socket: what a phone
/// and a computer have in common. The test runs the executor between calls.
class ScriptedDevice {
  public:
    struct Received {
        MacPayload payload;
        std::string requestID;
    };

    /// The record that the tested device stores about this one.
    [[nodiscard]] PairedPeer asPeer(const std::string& relayURL = "http://relay.example") const;

    /// Uses this socket as the relay's end from now on; the tested device at the other end is `other`.
    void attach(std::shared_ptr<ScriptedSocket> socket, const DeviceIdentity& other);

    /// Plays the relay's part of a login.
    void logIn(bool thisIsOnline = true);
    /// Plays a relay that refuses the login.
    void refuseLogin(RelayFailure code, const std::string& detail);
    /// Answers the other device's hello, so that both have a session.
    void exchangeHellos();

    void deliver(RelayMessage message);
    /// Plays the relay's answer to all waiting pings.
    void pong();
    /// Seals a message without sending it.
    Envelope seal(const MacPayload& payload, std::string requestID);
    void send(MacPayload payload, std::string requestID);

    /// The other device's messages since the last call, opened.
    std::vector<Received> take();
    /// The other device's envelopes since the last call.
    std::vector<Envelope> takeEnvelopes();

    const DeviceIdentity identity = DeviceIdentity::generate();
    PairID pair{"PAIR"};

  protected:
    ScriptedDevice(DeviceRole role, ManualClock& clock) : role_(role), clock_(clock) {}

  private:
    DeviceRole role_;
    ManualClock& clock_;
    ScriptedRandom random_;
    std::shared_ptr<ScriptedSocket> socket_;
    std::optional<PairedPeer> other_;
    std::optional<SecureChannel> channel_;
    std::size_t taken_ = 0;
};

} // namespace morvex
