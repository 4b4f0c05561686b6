#pragma once

#include "foundation/Random.h"

namespace morvex {

/// Predictable UUIDs: 00000000-0000-4000-8000-000000000001 and so on.
class ScriptedRandom final : public Random {
  public:
    Uuid uuid() override {
        ++drawn_;
        std::array<std::uint8_t, 16> bytes{};
        for (std::size_t i = 0; i < 8; ++i) bytes[15 - i] = static_cast<std::uint8_t>(drawn_ >> (8 * i));
        return Uuid::fromRandom(bytes);
    }

  private:
    std::uint64_t drawn_ = 0;
};

} // namespace morvex
