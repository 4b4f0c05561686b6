#pragma once

#include "shared/wire/PairingBundle.h"
#include "tests/support/ScriptedDevice.h"

#include <memory>
#include <string>
#include <vector>

namespace morvex {

/// A computer, and the relay before it, at the other end of the phone's scripted socket. It keeps the phone's
/// milestones apart from its other messages.
class ScriptedMac : public ScriptedDevice {
  public:
    explicit ScriptedMac(ManualClock& clock) : ScriptedDevice(DeviceRole::mac, clock) {}

    /// What its QR code says.
    [[nodiscard]] PairingBundle bundle() const;

    /// Like that of any device; messages that nobody took are forgotten.
    void attach(std::shared_ptr<ScriptedSocket> socket, const DeviceIdentity& phone);

    /// What the phone sent since the last call, opened; without its milestones.
    std::vector<Received> take();
    /// The request ids of its milestones that are not answered yet.
    const std::vector<std::string>& milestones();
    /// Answers the milestones that the phone has sent. Gives how many there were.
    std::size_t reachMilestones();

    const std::string relayURL = "http://relay.example";

  private:
    void receive();

    std::vector<Received> received_;
    std::vector<std::string> milestones_; ///< not answered yet
};

} // namespace morvex
