#include "platform/ports/NoPersonalData.h"

namespace morvex {

namespace {

template <class T> Task<Result<T>> missing() {
    co_return fail(TextError("Tento počítač nemá službu kalendářů, připomínek a kontaktů."_sentence));
}

} // namespace

Task<Result<void>> NoPersonalData::Calendars::requestAccess(std::stop_token) {
    return missing<void>();
}

Connection NoPersonalData::Calendars::onChange(std::function<void()>) {
    return {};
}

Task<Result<std::vector<CalendarInfo>>> NoPersonalData::Calendars::calendars(std::stop_token) {
    return missing<std::vector<CalendarInfo>>();
}

Task<Result<std::optional<std::string>>> NoPersonalData::Calendars::defaultCalendar(std::stop_token) {
    return missing<std::optional<std::string>>();
}

Task<Result<std::vector<CalendarEvent>>>
NoPersonalData::Calendars::events(Date, Date, std::vector<std::string>, std::size_t, std::stop_token) {
    return missing<std::vector<CalendarEvent>>();
}

Task<Result<std::optional<CalendarEvent>>> NoPersonalData::Calendars::event(std::string, std::stop_token) {
    return missing<std::optional<CalendarEvent>>();
}

Task<Result<std::string>> NoPersonalData::Calendars::create(NewCalendarEvent, std::stop_token) {
    return missing<std::string>();
}

Task<Result<bool>> NoPersonalData::Calendars::update(std::string, CalendarEventChange, std::stop_token) {
    return missing<bool>();
}

Task<Result<bool>> NoPersonalData::Calendars::remove(std::string, std::stop_token) {
    return missing<bool>();
}

Task<Result<void>> NoPersonalData::Reminders::requestAccess(std::stop_token) {
    return missing<void>();
}

Connection NoPersonalData::Reminders::onChange(std::function<void()>) {
    return {};
}

Task<Result<std::vector<ReminderList>>> NoPersonalData::Reminders::lists(std::stop_token) {
    return missing<std::vector<ReminderList>>();
}

Task<Result<std::optional<std::string>>> NoPersonalData::Reminders::defaultList(std::stop_token) {
    return missing<std::optional<std::string>>();
}

Task<Result<std::vector<Reminder>>> NoPersonalData::Reminders::reminders(bool, std::stop_token) {
    return missing<std::vector<Reminder>>();
}

Task<Result<std::string>> NoPersonalData::Reminders::create(NewReminder, std::stop_token) {
    return missing<std::string>();
}

Task<Result<std::optional<Reminder>>> NoPersonalData::Reminders::complete(std::string, std::stop_token) {
    return missing<std::optional<Reminder>>();
}

Task<Result<void>> NoPersonalData::Contacts::requestAccess(std::stop_token) {
    return missing<void>();
}

Connection NoPersonalData::Contacts::onChange(std::function<void()>) {
    return {};
}

Task<Result<std::vector<Contact>>> NoPersonalData::Contacts::named(std::string, std::size_t,
                                                                   std::stop_token) {
    return missing<std::vector<Contact>>();
}

} // namespace morvex
