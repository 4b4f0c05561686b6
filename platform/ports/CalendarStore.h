#pragma once

#include "platform/ports/PersonalDataStore.h"
#include "shared/base/Date.h"

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

struct CalendarInfo {
    std::string id;
    std::string name;
    std::string account; ///< the name of what it belongs to, such as an account on the Internet
    bool writable = false;

    bool operator==(const CalendarInfo&) const = default;
};

/// An event, or one occurrence of a series.
struct CalendarEvent {
    std::string id; ///< opaque; names one occurrence of a series
    std::optional<std::string> title;
    Date start;
    Date end; ///< of an all-day event: the last second of its last day, by the zone of the computer
    bool allDay = false;
    std::string calendar; ///< its id
    std::optional<std::string> location;

    bool operator==(const CalendarEvent&) const = default;
};

struct NewCalendarEvent {
    std::string title;
    Date start;
    Date end;
    std::optional<std::string> location;
    std::string calendar; ///< the id of a writable one
};

/// What a change of an event sets; the rest stays.
struct CalendarEventChange {
    std::optional<std::string> title;
    std::optional<Date> start;
    std::optional<Date> end;
    std::optional<std::string> location;
};

/// The calendars that the desktop has. Every operation ends when `stop` is requested, also if the service
/// behind it hangs. A failure has the service's own words, which are never empty. Main thread only.
class CalendarStore : public PersonalDataStore {
  public:
    /// In no order.
    virtual Task<Result<std::vector<CalendarInfo>>> calendars(std::stop_token stop) = 0;

    /// The id of the calendar that the desktop puts new events into, if there is one.
    virtual Task<Result<std::optional<std::string>>> defaultCalendar(std::stop_token stop) = 0;

    /// What overlaps the time from `from` to `to` in the calendars of these ids, occurrences one by one,
    /// sorted by start: the first `limit` ones. Calendars that are gone are left out.
    virtual Task<Result<std::vector<CalendarEvent>>> events(Date from, Date to,
                                                            std::vector<std::string> calendars,
                                                            std::size_t limit, std::stop_token stop) = 0;

    /// Nothing if there is no such event. `id` may be any text.
    virtual Task<Result<std::optional<CalendarEvent>>> event(std::string id, std::stop_token stop) = 0;

    /// Returns the id of the event.
    virtual Task<Result<std::string>> create(NewCalendarEvent event, std::stop_token stop) = 0;

    /// Changes this occurrence only. An all-day event stays one. Returns whether there is such an event.
    virtual Task<Result<bool>> update(std::string id, CalendarEventChange change, std::stop_token stop) = 0;

    /// Removes this occurrence only. Returns whether there was such an event.
    virtual Task<Result<bool>> remove(std::string id, std::stop_token stop) = 0;
};

} // namespace morvex
