#pragma once

#include "platform/ports/PowerMonitor.h"

#include <filesystem>

namespace morvex {

/// Reads the power supplies from the kernel, one folder each. Supplies of attached devices (a mouse, a
/// headset) do not count.
class SysfsPower final : public PowerMonitor {
  public:
    explicit SysfsPower(std::filesystem::path root = "/sys/class/power_supply") : root_(std::move(root)) {}

    /// No supply at all is a computer without a battery: mains. A list that cannot be read counts as battery.
    [[nodiscard]] bool onMains() const override;

  private:
    std::filesystem::path root_;
};

} // namespace morvex
