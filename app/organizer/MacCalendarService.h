#pragma once

#include "app/organizer/CalendarChoice.h"
#include "app/organizer/MacCalendarServiceError.h"
#include "app/organizer/PersonalAccess.h"
#include "foundation/Signal.h"
#include "foundation/TextOrder.h"

#include <cstdint>
#include <functional>
#include <optional>
#include <stop_token>
#include <string>
#include <utility>
#include <vector>

namespace morvex {

using CalendarOption = CalendarInfo;

/// An event with the name of its calendar.
struct ListedEvent {
    CalendarEvent event;
    std::string calendarName;
};

struct EventToCreate {
    std::string title;
    Date start;
    Date end;
    std::optional<std::string> location;
    std::optional<std::string> calendarName; ///< compared without regard to case and diacritics
};

struct CreatedEvent {
    std::string id;
    std::string calendarName;
};

/// The calendars of this computer, as far as the user allows them, and their events. Owned by the feature;
/// main thread only. The owner ends all tasks before it destroys this object.
class MacCalendarService {
  public:
    using Error = MacCalendarServiceError;

    /// The longest range of events, in days: four years with their leap day.
    static constexpr std::chrono::days longestRange{4 * 365 + 1};
    static constexpr std::size_t mostEvents = 2000;

    struct Services {
        CalendarStore& store;
        UserDefaults& defaults;
        Clock& clock;
    };

    /// Reads the stored choice; asks the store nothing.
    explicit MacCalendarService(Services services);

    [[nodiscard]] DataAccess authorizationStatus() const { return access_.status(); }

    [[nodiscard]] Sentence statusText() const;

    /// Why the calendars could not be asked the last time; for views.
    [[nodiscard]] const std::optional<Sentence>& accessError() const { return access_.error(); }

    /// All calendars, sorted by account and name; empty without full access.
    [[nodiscard]] const std::vector<CalendarOption>& options() const { return options_; }

    /// Those of the options that are enabled.
    [[nodiscard]] std::vector<CalendarOption> enabledCalendars() const;

    /// Whether there is a calendar of this id, and the user allows it.
    [[nodiscard]] bool isEnabled(const std::string& id) const;

    /// Whether the tools can do anything: full access and an enabled calendar.
    [[nodiscard]] bool isUsable() const;

    /// The calendar that the user chose for new events.
    [[nodiscard]] const std::optional<std::string>& writeCalendarID() const {
        return choice_.writeCalendarID();
    }

    /// Asks for access and loads the calendars; `accessError` tells a failure.
    Task<void> requestAccess(std::stop_token stop = {});

    /// Loads the calendars anew, and looks for a service that was out of reach. Opens no question to the
    /// user.
    Task<void> refresh(std::stop_token stop = {});

    /// Loads the calendars anew, with the access that there is.
    Task<void> reload(std::stop_token stop = {});

    // Every operation below asks for access where that is open, and loads the calendars. They fail with
    // `Error` or with the words of the store.

    Task<Result<std::vector<CalendarOption>>> listCalendars(std::stop_token stop);

    /// Sorted by start. Of a range beyond `longestRange` its beginning, of more than `mostEvents` the first;
    /// nothing if `end` is before `start`.
    Task<Result<std::vector<ListedEvent>>> listEvents(Date start, Date end, std::stop_token stop);

    /// Without a name the event goes into the chosen calendar, else into that of the desktop, else into the
    /// first one that can be written to.
    Task<Result<CreatedEvent>> createEvent(EventToCreate event, std::stop_token stop);

    /// Changes this occurrence only. Returns its title.
    Task<Result<std::string>> updateEvent(std::string id, CalendarEventChange change, std::stop_token stop);

    /// Removes this occurrence only. Returns the title that it had.
    Task<Result<std::string>> deleteEvent(std::string id, std::stop_token stop);

    /// The first choice keeps all other calendars as they are, and so fails with `noAccess` as long as these
    /// are not known. Disabling takes effect at once, enabling once it is saved; it fails with the error of
    /// the save.
    Task<Result<void>> setCalendarEnabled(std::string id, bool enabled);

    /// Does nothing without an id, and for a calendar that is not enabled or cannot be written to. Takes
    /// effect once it is saved; fails with the error of the save.
    Task<Result<void>> setWriteCalendar(std::optional<std::string> id);

    /// New events go where the desktop puts them.
    void clearWriteCalendar();

    /// Called after each choice.
    [[nodiscard]] Connection onChange(std::function<void()> call) {
        return changed_.connect(std::move(call));
    }

    /// For views: called when the options, the choice, the status or the error may have changed.
    [[nodiscard]] Connection onRowsChange(std::function<void()> call) {
        return rowsChanged_.connect(std::move(call));
    }

  private:
    Task<Result<void>> ensureAccess(std::stop_token stop);
    Task<Result<void>> load(std::stop_token stop);
    void take(std::vector<CalendarOption> calendars);
    void setOptions(std::vector<CalendarOption> options);
    [[nodiscard]] const CalendarOption* option(const std::string& id) const;
    Task<Result<CalendarOption>> calendarFor(std::optional<std::string> name, std::stop_token stop);
    Task<Result<CalendarEvent>> changeable(std::string id, std::stop_token stop);
    void tellChoice();

    Services services_;
    PersonalAccess access_;
    CalendarChoice choice_;
    TextOrder order_;
    std::vector<CalendarOption> options_;
    std::uint64_t loadsBegun_ = 0;
    std::uint64_t loadTaken_ = 0; ///< of several loads at a time an older one does not replace a newer one
    Signal<> changed_;
    Signal<> rowsChanged_;
    Connection accessChanged_;
};

} // namespace morvex
