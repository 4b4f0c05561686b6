#pragma once

#include "platform/ports/CalendarStore.h"
#include "platform/ports/ContactStore.h"
#include "platform/ports/ReminderStore.h"

#include <cstddef>
#include <functional>
#include <optional>
#include <string>
#include <vector>

namespace morvex {

/// The stores of a system that has no calendars, reminders and contacts: every call fails and says so.
class NoPersonalData {
  public:
    class Calendars final : public CalendarStore {
      public:
        [[nodiscard]] DataAccess access() const override { return DataAccess::restricted; }

        Task<Result<void>> requestAccess(std::stop_token stop) override;
        [[nodiscard]] Connection onChange(std::function<void()> slot) override;
        Task<Result<std::vector<CalendarInfo>>> calendars(std::stop_token stop) override;
        Task<Result<std::optional<std::string>>> defaultCalendar(std::stop_token stop) override;
        Task<Result<std::vector<CalendarEvent>>> events(Date from, Date to,
                                                        std::vector<std::string> calendars, std::size_t limit,
                                                        std::stop_token stop) override;
        Task<Result<std::optional<CalendarEvent>>> event(std::string id, std::stop_token stop) override;
        Task<Result<std::string>> create(NewCalendarEvent event, std::stop_token stop) override;
        Task<Result<bool>> update(std::string id, CalendarEventChange change, std::stop_token stop) override;
        Task<Result<bool>> remove(std::string id, std::stop_token stop) override;
    };

    class Reminders final : public ReminderStore {
      public:
        [[nodiscard]] DataAccess access() const override { return DataAccess::restricted; }

        Task<Result<void>> requestAccess(std::stop_token stop) override;
        [[nodiscard]] Connection onChange(std::function<void()> slot) override;

        [[nodiscard]] bool ringsAtPlaces() const override { return false; }

        Task<Result<std::vector<ReminderList>>> lists(std::stop_token stop) override;
        Task<Result<std::optional<std::string>>> defaultList(std::stop_token stop) override;
        Task<Result<std::vector<Reminder>>> reminders(bool includeCompleted, std::stop_token stop) override;
        Task<Result<std::string>> create(NewReminder reminder, std::stop_token stop) override;
        Task<Result<std::optional<Reminder>>> complete(std::string id, std::stop_token stop) override;
    };

    class Contacts final : public ContactStore {
      public:
        [[nodiscard]] DataAccess access() const override { return DataAccess::restricted; }

        Task<Result<void>> requestAccess(std::stop_token stop) override;
        [[nodiscard]] Connection onChange(std::function<void()> slot) override;
        Task<Result<std::vector<Contact>>> named(std::string name, std::size_t limit,
                                                 std::stop_token stop) override;
    };

    Calendars calendars;
    Reminders reminders;
    Contacts contacts;
};

} // namespace morvex
