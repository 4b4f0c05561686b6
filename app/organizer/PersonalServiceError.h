#pragma once

#include "shared/base/Sentence.h"

namespace morvex {

/// Why reminders or contacts could not be used.
struct PersonalServiceError {
    enum class Case {
        remindersAccess,
        contactsAccess,
        noReminderList,
        reminderNotFound,
        locationNotFound,
        noAnswer, ///< of any of the services, in the time that it has
    };

    Case value;

    [[nodiscard]] Sentence popis() const;
    bool operator==(const PersonalServiceError&) const = default;
};

} // namespace morvex
