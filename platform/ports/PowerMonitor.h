#pragma once

namespace morvex {

/// The power source of the computer. Polled on the main thread, so an answer costs at most the reading of a
/// few small kernel files.
class PowerMonitor {
  public:
    virtual ~PowerMonitor() = default;

    [[nodiscard]] virtual bool onMains() const = 0;
};

} // namespace morvex
