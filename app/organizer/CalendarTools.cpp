#include "app/organizer/CalendarTools.h"

#include "app/organizer/AnswerList.h"
#include "app/organizer/DateArgument.h"
#include "shared/wire/MacToolName.h"

namespace morvex {

struct EventRange {
    std::string from;
    std::string to;
};

void describe(auto& io, Is<EventRange> auto& range) {
    io.required("from", range.from);
    io.required("to", range.to);
}

struct NewEvent {
    std::string title;
    std::string start;
    std::string end;
    std::optional<std::string> calendar;
    std::optional<std::string> location;
};

void describe(auto& io, Is<NewEvent> auto& event) {
    io.required("title", event.title);
    io.required("start", event.start);
    io.required("end", event.end);
    io.optional("calendar", event.calendar);
    io.optional("location", event.location);
}

struct EventUpdate {
    std::optional<std::string> id;
    std::optional<std::string> title;
    std::optional<std::string> start;
    std::optional<std::string> end;
    std::optional<std::string> location;
};

void describe(auto& io, Is<EventUpdate> auto& update) {
    io.required("id", update.id);
    io.optional("title", update.title);
    io.optional("start", update.start);
    io.optional("end", update.end);
    io.optional("location", update.location);
}

struct EventRemoval {
    std::optional<std::string> id;
};

void describe(auto& io, Is<EventRemoval> auto& removal) {
    io.required("id", removal.id);
}

namespace {

constexpr const char* missingID = "Chybí identifikátor události.";

boost::json::object calendarEntry(const CalendarOption& calendar) {
    return {{"id", calendar.id},
            {"name", calendar.name},
            {"account", calendar.account},
            {"writable", calendar.writable}};
}

boost::json::object eventEntry(const ListedEvent& listed, const TimeZone& zone) {
    const auto& event = listed.event;
    return {{"id", event.id},
            {"title", event.title.value_or("(bez názvu)")},
            {"local_start", formatLocalDate(event.start, zone)},
            {"local_end", formatLocalDate(event.end, zone)},
            {"all_day", event.allDay},
            {"calendar", listed.calendarName},
            {"location", event.location.value_or("")},
            {"time_zone", zone.name()}};
}

/// Contains what was done and the title of the event.
ToolOutcome answer(std::string_view done, const Result<std::string>& title) {
    if (!title) return ToolOutcome::refused(title.error());
    return ToolOutcome::done({{done, true}, {"title", *title}});
}

} // namespace

void CalendarTools::addTo(ToolTable& table, std::function<bool()> isOn) {
    const auto offered = [this, isOn = std::move(isOn)] { return isOn() && calendar_.isUsable(); };
    table.add(MacToolName::calendarCalendars, offered, this, &CalendarTools::calendars);
    table.add(MacToolName::calendarList, offered, this, &CalendarTools::list);
    table.add(MacToolName::calendarCreate, offered, this, &CalendarTools::create);
    table.add(MacToolName::calendarUpdate, offered, this, &CalendarTools::update);
    table.add(MacToolName::calendarDelete, offered, this, &CalendarTools::remove);
}

std::optional<Date> CalendarTools::moment(const std::optional<std::string>& text) const {
    return text ? parseDate(*text, BareDay::itsStart, localTime_.zone()) : std::nullopt;
}

Task<ToolOutcome> CalendarTools::calendars(NoArguments, ToolCall call) {
    const auto calendars = co_await limit_.run(std::move(call.abandonment), [this](std::stop_token stop) {
        return calendar_.listCalendars(std::move(stop));
    });
    if (!calendars) co_return ToolOutcome::refused(calendars.error());
    AnswerList entries;
    for (const auto& calendar : *calendars) entries.add(calendarEntry(calendar));
    co_return std::move(entries).outcome("calendars");
}

Task<ToolOutcome> CalendarTools::list(EventRange range, ToolCall call) {
    const auto from = moment(range.from);
    const auto to = parseDate(range.to, BareDay::itsEnd, localTime_.zone());
    if (!from || !to) co_return ToolOutcome::refused("Chybí platné období kalendáře.");
    const auto events =
        co_await limit_.run(std::move(call.abandonment), [this, from, to](std::stop_token stop) {
            return calendar_.listEvents(*from, *to, std::move(stop));
        });
    if (!events) co_return ToolOutcome::refused(events.error());
    AnswerList entries;
    const auto zone = localTime_.zone();
    for (const auto& event : *events) entries.add(eventEntry(event, zone));
    co_return std::move(entries).outcome("events");
}

Task<ToolOutcome> CalendarTools::create(NewEvent event, ToolCall call) {
    const auto start = moment(event.start);
    const auto end = moment(event.end);
    if (event.title.empty() || !start || !end || *end <= *start)
        co_return ToolOutcome::refused(
            MacCalendarService::Error{MacCalendarService::Error::Case::noValidTime});
    EventToCreate wanted{std::move(event.title), *start, *end, std::move(event.location),
                         std::move(event.calendar)};
    const auto created = co_await limit_.run(std::move(call.abandonment), [&](std::stop_token stop) {
        return calendar_.createEvent(std::move(wanted), std::move(stop));
    });
    if (!created) co_return ToolOutcome::refused(created.error());
    co_return ToolOutcome::done(
        {{"created", true}, {"id", created->id}, {"calendar", created->calendarName}});
}

Task<ToolOutcome> CalendarTools::update(EventUpdate update, ToolCall call) {
    if (!update.id) co_return ToolOutcome::refused(missingID);
    CalendarEventChange change{std::move(update.title), moment(update.start), moment(update.end),
                               std::move(update.location)};
    const auto title = co_await limit_.run(std::move(call.abandonment), [&](std::stop_token stop) {
        return calendar_.updateEvent(*std::move(update.id), std::move(change), std::move(stop));
    });
    co_return answer("updated", title);
}

Task<ToolOutcome> CalendarTools::remove(EventRemoval removal, ToolCall call) {
    if (!removal.id) co_return ToolOutcome::refused(missingID);
    const auto title = co_await limit_.run(std::move(call.abandonment), [&](std::stop_token stop) {
        return calendar_.deleteEvent(*std::move(removal.id), std::move(stop));
    });
    co_return answer("deleted", title);
}

} // namespace morvex
