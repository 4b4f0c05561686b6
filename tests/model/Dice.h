#pragma once

#include "foundation/Random.h"

#include <array>
#include <cstdint>
#include <random>

namespace morvex {

/// A random generator that repeats its sequence for the same seed.
class Dice final : public Random {
  public:
    explicit Dice(std::uint64_t seed) : engine_(seed) {}

    int below(int bound) { return static_cast<int>(engine_() % static_cast<std::uint64_t>(bound)); }

    Uuid uuid() override {
        std::array<std::uint8_t, 16> bytes{};
        for (auto& byte : bytes) byte = static_cast<std::uint8_t>(engine_());
        return Uuid::fromRandom(bytes);
    }

  private:
    std::mt19937_64 engine_;
};

} // namespace morvex
