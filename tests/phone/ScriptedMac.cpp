#include "tests/phone/ScriptedMac.h"

#include <utility>

namespace morvex {

PairingBundle ScriptedMac::bundle() const {
    return {ProtocolVersion::current, relayURL, pair, "token", identity.signingKey(),
            identity.agreementKey()};
}

void ScriptedMac::attach(std::shared_ptr<ScriptedSocket> socket, const DeviceIdentity& phone) {
    ScriptedDevice::attach(std::move(socket), phone);
    received_.clear();
    milestones_.clear();
}

std::vector<ScriptedDevice::Received> ScriptedMac::take() {
    receive();
    return std::exchange(received_, {});
}

const std::vector<std::string>& ScriptedMac::milestones() {
    receive();
    return milestones_;
}

std::size_t ScriptedMac::reachMilestones() {
    receive();
    const auto reached = std::exchange(milestones_, {});
    for (const auto& requestID : reached) send({MacPayload::ToolResult{true, "{}"}}, requestID);
    return reached.size();
}

void ScriptedMac::receive() {
    for (auto& message : ScriptedDevice::take()) {
        if (message.requestID.starts_with("milestone:"))
            milestones_.push_back(std::move(message.requestID));
        else
            received_.push_back(std::move(message));
    }
}

} // namespace morvex
