#pragma once

#include "platform/memory/ManualClock.h"
#include "platform/memory/ScriptedRandom.h"
#include "platform/memory/ScriptedSockets.h"
#include "shared/trust/DeviceIdentity.h"
#include "shared/trust/SecureChannel.h"
#include "shared/wire/MacPayload.h"
#include "shared/wire/PairedPeer.h"
#include "shared/wire/PairingBundle.h"
#include "shared/wire/RelayMessage.h"

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// A Mac, and the relay before it, at the other end of a scripted socket. The test runs the executor between
/// calls.
class ScriptedMac {
  public:
    struct Received {
        MacPayload payload;
        std::string requestID;
    };

    explicit ScriptedMac(ManualClock& clock) : clock_(clock) {}

    /// What the phone stores about this Mac.
    [[nodiscard]] PairedPeer asPeer() const;
    /// What its QR code says.
    [[nodiscard]] PairingBundle bundle() const;

    /// From now on this socket is the relay, and the phone behind it is `phone`.
    void attach(std::shared_ptr<ScriptedSocket> socket, const DeviceIdentity& phone);

    /// The relay's part of a login.
    void logIn(bool macIsOnline = true);
    /// Answers the phone's hello; both have a session then.
    void exchangeHellos();

    void deliver(RelayMessage message);
    void send(MacPayload payload, std::string requestID);

    /// What the phone sent since the last call, opened; without its milestones.
    std::vector<Received> take();
    /// The request ids of the milestones among it that are not answered yet.
    const std::vector<std::string>& milestones();
    /// Answers the milestones that the phone has sent. Gives how many there were.
    std::size_t reachMilestones();
    /// The envelopes among what it sent since the last call.
    std::vector<Envelope> takeEnvelopes();

    const DeviceIdentity identity = DeviceIdentity::generate();
    const std::string relayURL = "http://relay.example";
    PairID pair{"PAIR"};

  private:
    void receive();

    ManualClock& clock_;
    ScriptedRandom random_;
    std::shared_ptr<ScriptedSocket> socket_;
    std::optional<PairedPeer> phone_;
    std::optional<SecureChannel> channel_;
    std::vector<Received> received_;
    std::vector<std::string> milestones_; ///< not answered yet
    std::size_t taken_ = 0;
};

} // namespace morvex
