#pragma once

namespace morvex {

/// Where the computer's power comes from. Asked on the main thread, again and again: an answer costs no more
/// than a few small files of the kernel.
class PowerMonitor {
  public:
    virtual ~PowerMonitor() = default;

    [[nodiscard]] virtual bool onMains() const = 0;
};

} // namespace morvex
