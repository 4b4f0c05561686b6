#pragma once

#include "foundation/TimeZone.h"

namespace morvex {

/// The time zone settings of this computer.
class LocalTime {
  public:
    virtual ~LocalTime() = default;

    /// The time zone that is set now; UTC if none is set. It may change between calls. From any thread.
    [[nodiscard]] virtual TimeZone zone() = 0;
};

} // namespace morvex
