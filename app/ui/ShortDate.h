#pragma once

#include "shared/base/Date.h"

#include <QString>

namespace morvex {

/// Day and time in the short form of the system's locale and time zone.
[[nodiscard]] QString shortDate(Date date);

/// Time of day down to the second, without a day.
[[nodiscard]] QString timeWithSeconds(Date date);

} // namespace morvex
