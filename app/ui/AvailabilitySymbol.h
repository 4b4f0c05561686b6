#pragma once

#include "shared/wire/MacAvailability.h"

#include <QString>

namespace morvex {

/// How the link is shown at a glance. Each differs by its shape, not by colour alone.
enum class AvailabilitySymbol { ready, busy, connecting, away, attention };

[[nodiscard]] AvailabilitySymbol availabilitySymbol(const MacAvailability& availability);

/// Name of its picture in `pictures/availability`.
[[nodiscard]] QString pictureName(AvailabilitySymbol symbol);

} // namespace morvex
