#pragma once

#include "shared/base/Sentence.h"

namespace morvex {

/// Why a calendar or an event could not be used.
struct MacCalendarServiceError {
    enum class Case {
        noAccess,
        noWritableCalendar,
        notFound,
        readOnly,
        calendarNotEnabled,
        noValidTime, ///< an event would end before it starts, or has no name
    };

    Case value;

    [[nodiscard]] Sentence popis() const;
    bool operator==(const MacCalendarServiceError&) const = default;
};

} // namespace morvex
