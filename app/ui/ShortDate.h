#pragma once

#include "shared/base/Date.h"

#include <QLocale>
#include <QString>

namespace morvex {

/// Day and time in the short form of the locale, in the system's time zone.
[[nodiscard]] QString shortDate(Date date, const QLocale& locale = QLocale::system());

/// Time of day including seconds, without the date.
[[nodiscard]] QString timeWithSeconds(Date date, const QLocale& locale = QLocale::system());

} // namespace morvex
