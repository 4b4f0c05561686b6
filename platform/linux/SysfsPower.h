#pragma once

#include "platform/ports/PowerMonitor.h"

#include <filesystem>

namespace morvex {

/// The power supplies as the kernel lists them, a folder each. What only charges or only powers a device that
/// hangs on the computer (a mouse, a headset) does not count.
class SysfsPower final : public PowerMonitor {
  public:
    explicit SysfsPower(std::filesystem::path root = "/sys/class/power_supply") : root_(std::move(root)) {}

    /// No supply at all is a computer without a battery: mains. A list that cannot be read counts as battery.
    [[nodiscard]] bool onMains() const override;

  private:
    std::filesystem::path root_;
};

} // namespace morvex
