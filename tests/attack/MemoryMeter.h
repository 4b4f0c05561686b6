#pragma once

#include "tests/support/Sanitized.h"

#include <gtest/gtest.h>

#include <cstddef>
#include <fstream>
#include <malloc.h>
#include <optional>
#include <string>

namespace morvex {

/// Growth of this process's memory, at its peak, since the meter was created. Not available under a
/// sanitizer, which keeps memory of its own.
class MemoryMeter {
  public:
    MemoryMeter() {
        malloc_trim(0);
        // Resets the peak count of the system (proc(5), clear_refs).
        std::ofstream("/proc/self/clear_refs") << 5;
        before_ = kibibytes("VmRSS:");
    }

    [[nodiscard]] std::optional<double> peakGrowthInMebibytes() const {
        if (isSanitized || !before_) return {};
        const auto peak = kibibytes("VmHWM:");
        if (!peak) return {};
        return *peak > *before_ ? static_cast<double>(*peak - *before_) / 1024 : 0;
    }

  private:
    static std::optional<std::size_t> kibibytes(const std::string& name) {
        std::ifstream status("/proc/self/status");
        for (std::string word; status >> word;)
            if (std::size_t count = 0; word == name && status >> count) return count;
        return {};
    }

    std::optional<std::size_t> before_;
};

/// Expects that an attack cost little memory, in MiB. Returns the amount for the reported line.
inline std::string expectLittleMemory(const MemoryMeter& memory, double mostGrowth = 32) {
    const auto growth = memory.peakGrowthInMebibytes();
    if (!growth) return "memory not measured";
    EXPECT_LT(*growth, mostGrowth) << "MiB";
    const auto text = std::to_string(*growth);
    return text.substr(0, text.find('.') + 2) + " MiB more";
}

} // namespace morvex
