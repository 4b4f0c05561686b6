#pragma once

#include "app/console/ConsoleOutput.h"
#include "app/organizer/MacCalendarService.h"
#include "app/organizer/MacContactsService.h"
#include "app/organizer/MacRemindersService.h"
#include "foundation/TaskScope.h"
#include "platform/ports/LocalTime.h"

#include <string>

namespace morvex {

/// The console's commands for calendars, reminders and contacts. Main thread.
class ConsoleOrganizer {
  public:
    struct Services {
        MacCalendarService& calendars;
        MacRemindersService& reminders;
        MacContactsService& contacts;
        LocalTime& localTime;
        TaskScope& scope; ///< runs what a command starts
        const ConsoleOutput& output;
    };

    /// What follows the name of the command `kalendar`.
    static constexpr const char* usage = "zap|vyp|vychozi ID";

    /// All references outlive this object.
    explicit ConsoleOrganizer(Services services) : services_(services) {}

    /// All calendars, those that are not allowed too.
    void printCalendars();

    /// Allows or forbids a calendar, or has it take new events.
    void changeCalendar(const std::string& words);

    /// The reminders that are not completed.
    void printReminders();

    void printContacts(const std::string& name);

  private:
    Task<void> loadAndPrintCalendars();
    Task<void> loadAndPrintReminders();
    Task<void> findAndPrint(std::string name);
    Task<void> enable(CalendarOption calendar, bool enabled);
    Task<void> writeInto(CalendarOption calendar);
    [[nodiscard]] std::string described(const CalendarOption& calendar) const;
    [[nodiscard]] std::string described(const Reminder& reminder) const;

    Services services_;
};

} // namespace morvex
