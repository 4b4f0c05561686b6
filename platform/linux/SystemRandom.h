#pragma once

#include "foundation/Random.h"

namespace morvex {

/// Identifiers from the kernel's random generator. Safe from any thread.
class SystemRandom final : public Random {
  public:
    Uuid uuid() override;
};

} // namespace morvex
