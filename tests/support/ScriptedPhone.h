#pragma once

#include "tests/support/ScriptedDevice.h"

#include <string>

namespace morvex {

/// A phone, and the relay before it, at the other end of the computer's scripted socket.
class ScriptedPhone : public ScriptedDevice {
  public:
    explicit ScriptedPhone(ManualClock& clock) : ScriptedDevice(DeviceRole::phone, clock) {}

    void call(std::string tool, std::string argumentsJSON, std::string requestID);
};

} // namespace morvex
