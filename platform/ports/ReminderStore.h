#pragma once

#include "platform/ports/PersonalDataStore.h"
#include "platform/ports/PlaceSearch.h"
#include "shared/base/Date.h"

#include <optional>
#include <string>
#include <vector>

namespace morvex {

struct ReminderList {
    std::string id;
    std::string name;
    bool writable = false;

    bool operator==(const ReminderList&) const = default;
};

struct Reminder {
    std::string id; ///< opaque
    std::string title;
    bool completed = false;
    std::string list; ///< the name of its list
    std::optional<Date> due;

    bool operator==(const Reminder&) const = default;
};

struct PlaceAlarm {
    FoundPlace place;
    bool onArrival = true; ///< else on leaving
    double radius = 200;   ///< metres
};

struct NewReminder {
    std::string title;
    std::optional<Date> due; ///< to the minute, by the zone of the computer, with an alarm then
    std::optional<PlaceAlarm> placeAlarm;
    std::string list; ///< the id of a writable one
};

/// The lists of reminders (tasks) that the desktop has. Every operation ends when `stop` is requested, also
/// if the service behind it hangs. A failure has the service's own words, which are never empty. Main thread
/// only.
class ReminderStore : public PersonalDataStore {
  public:
    /// Whether this computer itself alerts at a place, beside other devices that have the list.
    [[nodiscard]] virtual bool ringsAtPlaces() const = 0;

    /// In the store's order.
    virtual Task<Result<std::vector<ReminderList>>> lists(std::stop_token stop) = 0;

    /// The id of the list that the desktop puts new reminders into, if there is one.
    virtual Task<Result<std::optional<std::string>>> defaultList(std::stop_token stop) = 0;

    /// Those of all lists, in the store's order.
    virtual Task<Result<std::vector<Reminder>>> reminders(bool includeCompleted, std::stop_token stop) = 0;

    /// Returns the id of the reminder.
    virtual Task<Result<std::string>> create(NewReminder reminder, std::stop_token stop) = 0;

    /// Completes a reminder, of a series this one occurrence, also when it is completed already. Returns it,
    /// or nothing if there is none of this id, which may be any text.
    virtual Task<Result<std::optional<Reminder>>> complete(std::string id, std::stop_token stop) = 0;
};

} // namespace morvex
