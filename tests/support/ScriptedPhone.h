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

/// A phone, and the relay before it, at the other end of a scripted socket. The test runs the executor
/// between calls.
class ScriptedPhone {
  public:
    struct Received {
        MacPayload payload;
        std::string requestID;
    };

    explicit ScriptedPhone(ManualClock& clock) : clock_(clock) {}

    /// What the computer stores about this phone.
    [[nodiscard]] PairedPeer asPeer(const std::string& relayURL = "http://relay.example") const;

    /// From now on this socket is the relay, and the computer behind it is `mac`.
    void attach(std::shared_ptr<ScriptedSocket> socket, const DeviceIdentity& mac);

    /// The relay's part of a login.
    void logIn(bool phoneIsOnline = true);
    /// Instead, the relay refuses the login.
    void refuseLogin(RelayFailure code, const std::string& detail);
    /// Answers the computer's hello; both have a session then.
    void exchangeHellos();

    void deliver(RelayMessage message);
    /// The relay's answer to every ping that waits.
    void pong();
    /// A message that is not sent yet.
    Envelope seal(const MacPayload& payload, std::string requestID);
    void send(MacPayload payload, std::string requestID);
    void call(std::string tool, std::string argumentsJSON, std::string requestID);

    /// What the computer sent since the last call, opened.
    std::vector<Received> take();
    /// The envelopes among what it sent since the last call.
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
