#pragma once

#include "shared/base/Uuid.h"

namespace morvex {

/// Identifiers and other random values that tests must be able to predict. Never use it for keys. Safe from
/// any thread.
class Random {
  public:
    virtual ~Random() = default;

    /// A version 4 UUID.
    virtual Uuid uuid() = 0;
};

} // namespace morvex
