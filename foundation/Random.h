#pragma once

#include "shared/base/Uuid.h"

namespace morvex {

/// Identifiers and other random values that tests want to foresee. Keys never come from here. Any thread may
/// draw.
class Random {
  public:
    virtual ~Random() = default;

    /// A version 4 UUID.
    virtual Uuid uuid() = 0;
};

} // namespace morvex
