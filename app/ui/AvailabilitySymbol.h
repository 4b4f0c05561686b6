#pragma once

#include "shared/wire/MacAvailability.h"

#include <QString>

namespace morvex {

/// How the state of the link is drawn. The symbols differ in shape, not only in colour.
enum class AvailabilitySymbol { ready, busy, connecting, away, attention };

[[nodiscard]] AvailabilitySymbol availabilitySymbol(const MacAvailability& availability);

/// Name of the symbol's picture in `pictures/availability`.
[[nodiscard]] QString pictureName(AvailabilitySymbol symbol);

} // namespace morvex
