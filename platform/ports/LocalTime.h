#pragma once

#include "foundation/TimeZone.h"

namespace morvex {

/// Where this computer is, as far as its clock shows it.
class LocalTime {
  public:
    virtual ~LocalTime() = default;

    /// The zone that is set now; UTC where none is. It may be another one the next time. From any thread.
    [[nodiscard]] virtual TimeZone zone() = 0;
};

} // namespace morvex
