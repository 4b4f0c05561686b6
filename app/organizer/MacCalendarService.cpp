#include "app/organizer/MacCalendarService.h"

#include "foundation/Text.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <iterator>
#include <ranges>
#include <tuple>
#include <utility>

namespace morvex {

using Case = MacCalendarServiceError::Case;

namespace {

std::unexpected<Error> refuse(Case why) {
    return fail(MacCalendarServiceError{why});
}

std::string takeTitle(std::optional<std::string>& title) {
    return std::move(title).value_or("");
}

} // namespace

MacCalendarService::MacCalendarService(Services services)
    : services_(services),
      access_(services.store, services.clock),
      choice_(services.defaults),
      accessChanged_(access_.onChange([this] { rowsChanged_.tell(); })) {}

Sentence MacCalendarService::statusText() const {
    switch (authorizationStatus()) {
    case DataAccess::notDetermined:
        return "Kalendář čeká na povolení"_sentence;
    case DataAccess::restricted:
        return "Přístup ke kalendáři je systémem omezený"_sentence;
    case DataAccess::denied:
        return "Přístup ke kalendáři byl zamítnut"_sentence;
    case DataAccess::full:
        return "Kalendář je připojený"_sentence;
    case DataAccess::writeOnly:
        return "Kalendář je povolený pouze pro zápis"_sentence;
    case DataAccess::unknown:
        return "Stav kalendáře není známý"_sentence;
    }
    std::unreachable();
}

const CalendarOption* MacCalendarService::option(const std::string& id) const {
    const auto found = std::ranges::find(options_, id, &CalendarOption::id);
    return found == options_.end() ? nullptr : &*found;
}

bool MacCalendarService::isEnabled(const std::string& id) const {
    return option(id) && choice_.allows(id);
}

std::vector<CalendarOption> MacCalendarService::enabledCalendars() const {
    std::vector<CalendarOption> enabled;
    std::ranges::copy_if(options_, std::back_inserter(enabled),
                         [this](const CalendarOption& calendar) { return choice_.allows(calendar.id); });
    return enabled;
}

bool MacCalendarService::isUsable() const {
    return access_.isFull() && !enabledCalendars().empty();
}

Task<void> MacCalendarService::requestAccess(std::stop_token stop) {
    co_await access_.request(stop);
    co_await reload(std::move(stop));
}

Task<void> MacCalendarService::refresh(std::stop_token stop) {
    co_await access_.look(stop);
    co_await reload(std::move(stop));
}

Task<void> MacCalendarService::reload(std::stop_token stop) {
    const auto loaded = co_await load(std::move(stop));
    if (!loaded) access_.setError(loaded.error().popis());
}

Task<Result<void>> MacCalendarService::ensureAccess(std::stop_token stop) {
    co_await access_.ensure(stop);
    CO_CHECK(co_await load(std::move(stop)));
    if (!access_.isFull()) co_return refuse(Case::noAccess);
    co_return Result<void>{};
}

Task<Result<void>> MacCalendarService::load(std::stop_token stop) {
    const auto number = ++loadsBegun_;
    if (!access_.isFull()) {
        setOptions({});
        co_return Result<void>{};
    }
    CO_TRY(auto, calendars, co_await services_.store.calendars(std::move(stop)));
    if (number < loadTaken_) co_return Result<void>{};
    loadTaken_ = number;
    // A store that went out of reach meanwhile may have forgotten its calendars.
    if (access_.isFull())
        take(std::move(calendars));
    else
        setOptions({});
    co_return Result<void>{};
}

void MacCalendarService::take(std::vector<CalendarOption> calendars) {
    std::ranges::sort(calendars, [this](const CalendarOption& left, const CalendarOption& right) {
        auto order = order_.compare(left.account, right.account);
        if (order == 0) order = order_.compare(left.name, right.name);
        return order == 0 ? left.id < right.id : order < 0;
    });
    choice_.prune(calendars);
    setOptions(std::move(calendars));
}

void MacCalendarService::setOptions(std::vector<CalendarOption> options) {
    if (options_ == options) return;
    options_ = std::move(options);
    rowsChanged_.tell();
}

Task<Result<std::vector<CalendarOption>>> MacCalendarService::listCalendars(std::stop_token stop) {
    CO_CHECK(co_await ensureAccess(std::move(stop)));
    co_return enabledCalendars();
}

Task<Result<std::vector<ListedEvent>>> MacCalendarService::listEvents(Date start, Date end,
                                                                      std::stop_token stop) {
    CO_CHECK(co_await ensureAccess(stop));
    std::vector<ListedEvent> listed;
    std::vector<std::string> ids;
    for (const auto& calendar : enabledCalendars()) ids.push_back(calendar.id);
    if (ids.empty() || end < start) co_return listed;
    end = std::min(end, start + longestRange);
    CO_TRY(auto, events,
           co_await services_.store.events(start, end, std::move(ids), mostEvents, std::move(stop)));
    // The user may have disabled a calendar while it was read.
    std::erase_if(events, [this](const CalendarEvent& event) { return !isEnabled(event.calendar); });
    std::ranges::sort(events, {}, [](const CalendarEvent& event) { return std::tie(event.start, event.id); });
    for (auto& event : events | std::views::take(mostEvents)) {
        auto name = option(event.calendar)->name;
        listed.push_back({std::move(event), std::move(name)});
    }
    co_return listed;
}

Task<Result<CreatedEvent>> MacCalendarService::createEvent(EventToCreate event, std::stop_token stop) {
    CO_CHECK(co_await ensureAccess(stop));
    CO_TRY(auto, calendar, co_await calendarFor(std::move(event.calendarName), stop));
    CO_TRY(auto, id,
           co_await services_.store.create({std::move(event.title), event.start, event.end,
                                            std::move(event.location), std::move(calendar.id)},
                                           std::move(stop)));
    co_return CreatedEvent{std::move(id), std::move(calendar.name)};
}

Task<Result<CalendarOption>> MacCalendarService::calendarFor(std::optional<std::string> name,
                                                             std::stop_token stop) {
    auto writable = enabledCalendars();
    std::erase_if(writable, [](const CalendarOption& calendar) { return !calendar.writable; });
    if (writable.empty()) co_return refuse(Case::noWritableCalendar);
    if (name && !name->empty()) {
        const auto named = std::ranges::find(writable, fold(*name),
                                             [](const CalendarOption& each) { return fold(each.name); });
        if (named == writable.end()) co_return refuse(Case::noWritableCalendar);
        co_return *named;
    }
    auto chosen = writable.end();
    if (const auto& id = writeCalendarID()) chosen = std::ranges::find(writable, *id, &CalendarOption::id);
    if (chosen == writable.end()) {
        CO_TRY(const auto, id, co_await services_.store.defaultCalendar(std::move(stop)));
        if (id) chosen = std::ranges::find(writable, *id, &CalendarOption::id);
    }
    co_return chosen == writable.end() ? writable.front() : *chosen;
}

Task<Result<CalendarEvent>> MacCalendarService::changeable(std::string id, std::stop_token stop) {
    CO_CHECK(co_await ensureAccess(stop));
    CO_TRY(auto, event, co_await services_.store.event(std::move(id), std::move(stop)));
    if (!event) co_return refuse(Case::notFound);
    if (!isEnabled(event->calendar)) co_return refuse(Case::calendarNotEnabled);
    if (!option(event->calendar)->writable) co_return refuse(Case::readOnly);
    co_return *std::move(event);
}

Task<Result<std::string>> MacCalendarService::updateEvent(std::string id, CalendarEventChange change,
                                                          std::stop_token stop) {
    CO_TRY(auto, event, co_await changeable(id, stop));
    if (change.end.value_or(event.end) < change.start.value_or(event.start))
        co_return refuse(Case::noValidTime);
    auto title = change.title ? *change.title : takeTitle(event.title);
    CO_TRY(const bool, isThere,
           co_await services_.store.update(std::move(id), std::move(change), std::move(stop)));
    if (!isThere) co_return refuse(Case::notFound);
    co_return title;
}

Task<Result<std::string>> MacCalendarService::deleteEvent(std::string id, std::stop_token stop) {
    CO_TRY(auto, event, co_await changeable(id, stop));
    CO_TRY(const bool, wasThere, co_await services_.store.remove(std::move(id), std::move(stop)));
    if (!wasThere) co_return refuse(Case::notFound);
    co_return takeTitle(event.title);
}

Task<Result<void>> MacCalendarService::setCalendarEnabled(std::string id, bool enabled) {
    if (!choice_.isMade() && options_.empty()) co_return refuse(Case::noAccess);
    if (enabled) {
        CO_TRY(const bool, isAllowed, co_await choice_.allow(std::move(id), options_));
        if (!isAllowed) co_return Result<void>{};
    } else {
        choice_.forbid(id, options_);
    }
    tellChoice();
    co_return Result<void>{};
}

Task<Result<void>> MacCalendarService::setWriteCalendar(std::optional<std::string> id) {
    if (!id || !isEnabled(*id) || !option(*id)->writable) co_return Result<void>{};
    CO_TRY(const bool, isChosen, co_await choice_.setWriteCalendar(*std::move(id)));
    if (isChosen) tellChoice();
    co_return Result<void>{};
}

void MacCalendarService::clearWriteCalendar() {
    choice_.clearWriteCalendar();
    tellChoice();
}

void MacCalendarService::tellChoice() {
    changed_.tell();
    rowsChanged_.tell();
}

} // namespace morvex
