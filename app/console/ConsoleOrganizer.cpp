#include "app/console/ConsoleOrganizer.h"

#include "foundation/Text.h"
#include "platform/ports/UserDefaults.h"

#include <algorithm>
#include <utility>

namespace morvex {

namespace {

constexpr std::int64_t mostContacts = 20;

/// "14. 3. 2026 09:05"
std::string text(const WallTime& time) {
    using namespace std::chrono;
    const auto twoDigits = [](auto number) { return (number < 10 ? "0" : "") + std::to_string(number); };
    const hh_mm_ss clock(time.sinceMidnight);
    return std::to_string(unsigned{time.day.day()}) + ". " + std::to_string(unsigned{time.day.month()}) +
           ". " + std::to_string(int{time.day.year()}) + " " + twoDigits(clock.hours().count()) + ":" +
           twoDigits(clock.minutes().count());
}

} // namespace

std::string ConsoleOrganizer::described(const CalendarOption& calendar) const {
    auto text = calendar.id + ", " + calendar.name + ", " + calendar.account;
    text += services_.calendars.isEnabled(calendar.id) ? ", povolený" : ", nepovolený";
    if (!calendar.writable) text += ", jen pro čtení";
    if (services_.calendars.writeCalendarID() == calendar.id) text += ", výchozí pro nové události";
    return text;
}

void ConsoleOrganizer::printCalendars() {
    services_.scope.spawn(loadAndPrintCalendars());
}

Task<void> ConsoleOrganizer::loadAndPrintCalendars() {
    auto& calendars = services_.calendars;
    co_await calendars.refresh(services_.scope.token());
    for (const auto& calendar : calendars.options())
        services_.output.line("Kalendář: " + described(calendar));
    if (calendars.authorizationStatus() != DataAccess::full)
        services_.output.line(calendars.statusText());
    else if (calendars.options().empty())
        services_.output.line("Žádné kalendáře.");
    services_.output.trouble(calendars.accessError());
}

void ConsoleOrganizer::changeCalendar(const std::string& words) {
    const auto blank = words.find(' ');
    const auto action = fold(words.substr(0, blank));
    const auto id = blank == std::string::npos ? std::string() : trim(words.substr(blank));
    const bool isKnown = action == "zap" || action == "vyp" || action == "vychozi";
    if (!isKnown || id.empty()) return services_.output.line(std::string("Správně: kalendar ") + usage);
    const auto& options = services_.calendars.options();
    const auto found = std::ranges::find(options, id, &CalendarOption::id);
    if (found == options.end())
        return services_.output.line("Kalendář „" + id + "“ tu není. Seznam ukáže „kalendare“.");
    services_.scope.spawn(action == "vychozi" ? writeInto(*found) : enable(*found, action == "zap"));
}

Task<void> ConsoleOrganizer::enable(CalendarOption calendar, bool enabled) {
    const auto kept = co_await services_.calendars.setCalendarEnabled(calendar.id, enabled);
    if (!kept) co_return services_.output.trouble(notSavedBecause(kept.error()));
    services_.output.line((enabled ? "Povoleno: " : "Nepovoleno: ") + calendar.name);
}

Task<void> ConsoleOrganizer::writeInto(CalendarOption calendar) {
    const auto kept = co_await services_.calendars.setWriteCalendar(calendar.id);
    if (!kept) co_return services_.output.trouble(notSavedBecause(kept.error()));
    if (services_.calendars.writeCalendarID() == calendar.id)
        services_.output.line("Výchozí pro nové události: " + calendar.name);
    else
        services_.output.line("Do tohohle kalendáře nejde zapisovat, nebo není povolený: " + calendar.name);
}

std::string ConsoleOrganizer::described(const Reminder& reminder) const {
    auto told = reminder.title;
    if (!reminder.list.empty()) told += ", " + reminder.list;
    if (reminder.due) told += ", " + text(services_.localTime.zone().wallTime(*reminder.due));
    return told;
}

void ConsoleOrganizer::printReminders() {
    services_.scope.spawn(loadAndPrintReminders());
}

Task<void> ConsoleOrganizer::loadAndPrintReminders() {
    const auto reminders = co_await services_.reminders.list(false, services_.scope.token());
    if (!reminders) co_return services_.output.trouble(reminders.error().popis());
    for (const auto& reminder : *reminders) services_.output.line("Připomínka: " + described(reminder));
    if (reminders->empty()) services_.output.line("Žádné nesplněné připomínky.");
}

void ConsoleOrganizer::printContacts(const std::string& name) {
    services_.scope.spawn(findAndPrint(name));
}

Task<void> ConsoleOrganizer::findAndPrint(std::string name) {
    const auto found =
        co_await services_.contacts.searchContacts(name, mostContacts, services_.scope.token());
    if (!found) co_return services_.output.trouble(found.error().popis());
    for (const auto& contact : *found) {
        services_.output.line("Kontakt: " + MacContactsService::nameOf(contact));
        for (const auto& email : contact.emails) services_.output.line("  " + email);
        for (const auto& phone : contact.phones) services_.output.line("  " + phone);
    }
    if (found->empty()) services_.output.line("Kontakt „" + name + "“ jsem nenašel.");
}

} // namespace morvex
