#pragma once

#include "tests/support/Household.h"

namespace morvex {

/// A household whose relay is found by name, https://relay.example, with the system's trust.
class PrivateHousehold : public Household {
  public:
    PrivateHousehold();
};

} // namespace morvex
