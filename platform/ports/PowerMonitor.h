#pragma once

namespace morvex {

/// Where the computer's power comes from.
class PowerMonitor {
  public:
    virtual ~PowerMonitor() = default;

    [[nodiscard]] virtual bool onMains() const = 0;
};

} // namespace morvex
