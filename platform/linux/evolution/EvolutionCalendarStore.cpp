#include "platform/linux/evolution/EvolutionCalendarStore.h"

#include "platform/linux/evolution/CalendarObjects.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <iterator>

namespace morvex {

namespace {

using namespace std::chrono;

template <class T, class Work>
Result<T> inCalendar(EvolutionDesktop& desktop, const std::string& calendar, const TimeZone& local,
                     GCancellable* cancellable, Work work) {
    return desktop.with<T>(SourceKind::events, calendar, cancellable,
                           [&](EClient* client, GLibError& error) -> Result<T> {
                               return work(CalendarCall{E_CAL_CLIENT(client), local, cancellable, error});
                           });
}

CalendarEvent told(const Occurrence& each, const std::string& calendar) {
    const char* uid = i_cal_component_get_uid(each.component);
    return {.id = EventId{calendar, uid ? uid : "", each.key}.text(),
            .title = textOf(each.component, I_CAL_SUMMARY_PROPERTY),
            .start = each.begins,
            .end = each.ends,
            .allDay = each.start.kind == IcalTime::Kind::day,
            .calendar = calendar,
            .location = textOf(each.component, I_CAL_LOCATION_PROPERTY)};
}

/// The first occurrences of all calendars, with what they belong to.
class Gathering {
  public:
    Gathering(Date from, Date to, std::size_t limit)
        : from_(floor<seconds>(from)), to_(ceil<seconds>(to)), limit_(limit) {}

    /// Series and changed occurrences are all asked for, since the service looks for a changed occurrence
    /// where it was before; the rest a day around the time, since it may take a day for one of another zone.
    /// One question for both takes more than twice as long: the service has an index of times, which it uses
    /// only where every part of a question needs it.
    [[nodiscard]] Result<std::vector<Component>> query(const CalendarCall& call) const {
        TRY(auto, components, call.query("(has-recurrences?)"));
        TRY(auto, single,
            call.query("(and (not (has-recurrences?)) (occur-in-time-range? " + made(from_ - days(1)) + " " +
                       made(to_ + days(1)) + "))"));
        std::ranges::move(single, std::back_inserter(components));
        return components;
    }

    /// A calendar may take `longest`, so that one whose series are made to cost time does not take it from
    /// the others.
    Result<void> add(const std::string& calendar, std::vector<Component> components,
                     const CalendarCall& call) {
        const auto zones = call.zones();
        const auto until = steady_clock::now() + longest;
        for (auto& [uid, series] : EventSeries::grouped(std::move(components))) {
            if (g_cancellable_is_cancelled(call.cancellable)) return fail(Abandoned{});
            if (steady_clock::now() > until) return fail(EvolutionTrouble{SystemTrouble::serviceSilent});
            auto found = series.between(from_, to_, call.local, zones);
            keepFirst(found, [](const Occurrence& each) { return each.begins; });
            for (const auto& each : found) events_.push_back(told(each, calendar));
            if (events_.size() > 2 * limit_ + 1000) keepFirst(events_, &CalendarEvent::start);
        }
        return {};
    }

    std::vector<CalendarEvent> take() {
        std::ranges::sort(events_, {},
                          [](const CalendarEvent& each) { return std::tie(each.start, each.id); });
        if (events_.size() > limit_) events_.resize(limit_);
        return std::move(events_);
    }

  private:
    static constexpr seconds longest{5};

    static std::string made(sys_seconds time) {
        return "(make-time \"" + IcalTime{IcalTime::Kind::utc, time.time_since_epoch(), nullptr, ""}.key() +
               "\")";
    }

    template <class Each, class Begin> void keepFirst(std::vector<Each>& all, Begin begin) const {
        if (all.size() <= limit_) return;
        std::ranges::nth_element(all, all.begin() + static_cast<std::ptrdiff_t>(limit_), {}, begin);
        all.erase(all.begin() + static_cast<std::ptrdiff_t>(limit_), all.end());
    }

    sys_seconds from_;
    sys_seconds to_;
    std::size_t limit_;
    std::vector<CalendarEvent> events_;
};

Result<std::vector<CalendarEvent>> gather(EvolutionDesktop& desktop, Gathering gathering,
                                          const std::vector<std::string>& calendars, const TimeZone& local,
                                          GCancellable* cancellable) {
    AnswersTogether answers;
    for (const auto& calendar : calendars) {
        const auto done = inCalendar<void>(desktop, calendar, local, cancellable,
                                           [&](const CalendarCall& call) -> Result<void> {
                                               TRY(auto, components, gathering.query(call));
                                               return gathering.add(calendar, std::move(components), call);
                                           });
        if (!answers.add(done)) break;
    }
    CHECK(answers.outcome());
    return gathering.take();
}

/// Calls `work` with the event of this id; `absent` if there is none.
template <class T, class Work>
Result<T> withEvent(EvolutionDesktop& desktop, const std::string& text, const TimeZone& local,
                    GCancellable* cancellable, T absent, Work work) {
    const auto id = EventId::parse(text);
    if (!id) return absent;
    auto result =
        inCalendar<T>(desktop, id->source, local, cancellable, [&](const CalendarCall& call) -> Result<T> {
            TRY(auto, series, call.series(id->uid));
            const auto found = series.named(id->recurrence, local, call.zones());
            if (!found) return absent;
            return work(call, *id, series, *found);
        });
    if (!result && isGone(result.error())) return absent;
    return result;
}

struct Times {
    sys_seconds start;
    sys_seconds end;
};

/// An all-day event stays one: from the day of the start to that of the last second before the end.
void setDays(ICalComponent* component, Times times, const TimeZone& local) {
    const auto dayOf = [&local](sys_seconds at) {
        return floor<days>(at.time_since_epoch() + local.offset(Date(at)));
    };
    const auto first = dayOf(times.start);
    const auto last = dayOf(std::max(times.start, times.end - seconds(1)));
    const IcalTime day{IcalTime::Kind::day, first, nullptr, ""};
    setTime(component, I_CAL_DTSTART_PROPERTY, day);
    setTime(component, I_CAL_DTEND_PROPERTY, day.at(last + days(1)));
}

Result<void> setTimes(const CalendarCall& call, ICalComponent* component, Times times) {
    TRY(auto, start, call.localTime(times.start));
    TRY(auto, end, call.localTime(std::max(times.start, times.end)));
    setTime(component, I_CAL_DTSTART_PROPERTY, start);
    setTime(component, I_CAL_DTEND_PROPERTY, end);
    return {};
}

/// The component that describes this occurrence alone, as it is saved.
Component alone(const Occurrence& found) {
    Component component(i_cal_component_clone(found.component));
    if (found.isOwn) return component;
    // Otherwise the occurrence would be a series itself.
    for (const auto kind :
         {I_CAL_RRULE_PROPERTY, I_CAL_RDATE_PROPERTY, I_CAL_EXDATE_PROPERTY, I_CAL_EXRULE_PROPERTY})
        removeAll(component.get(), kind);
    setTime(component.get(), I_CAL_RECURRENCEID_PROPERTY, found.start);
    setTime(component.get(), I_CAL_DTSTART_PROPERTY, found.start);
    removeAll(component.get(), I_CAL_DURATION_PROPERTY);
    setTime(component.get(), I_CAL_DTEND_PROPERTY, found.start.at(found.start.wall + found.length));
    return component;
}

void setText(ICalComponent* component, ICalPropertyKind kind, const std::string& text) {
    removeAll(component, kind);
    const auto stored = storedText(text);
    if (stored.empty()) return;
    if (kind == I_CAL_SUMMARY_PROPERTY)
        i_cal_component_set_summary(component, stored.c_str());
    else
        i_cal_component_set_location(component, stored.c_str());
}

Result<bool> change(const CalendarCall& call, const Occurrence& found, const CalendarEventChange& wanted) {
    const auto component = alone(found);
    if (wanted.title) setText(component.get(), I_CAL_SUMMARY_PROPERTY, *wanted.title);
    if (wanted.location) setText(component.get(), I_CAL_LOCATION_PROPERTY, *wanted.location);
    if (wanted.start || wanted.end) {
        const Times times{wanted.start ? floor<seconds>(*wanted.start) : found.begins,
                          wanted.end ? floor<seconds>(*wanted.end) : found.ends};
        removeAll(component.get(), I_CAL_DURATION_PROPERTY);
        if (found.start.kind == IcalTime::Kind::day)
            setDays(component.get(), times, call.local);
        else
            CHECK(setTimes(call, component.get(), times));
    }
    CHECK(call.modify(component.get(), E_CAL_OBJ_MOD_THIS));
    return true;
}

Result<bool> erase(const CalendarCall& call, const EventId& id, const EventSeries& series,
                   const Occurrence& found) {
    const auto planned = IcalTime::of(found.component, I_CAL_RECURRENCEID_PROPERTY, call.zones());
    // A changed occurrence is named by what stands in it. That leaves an exception without a zone, which
    // other programs may not understand, so the series gets the true one too.
    if (planned) CHECK(call.remove(id.uid, planned->text().c_str()));
    if (planned && !series.master()) return true;
    if (planned && id.recurrence == planned->text()) return true;
    CHECK(call.remove(id.uid, id.recurrence.empty() ? nullptr : id.recurrence.c_str()));
    return true;
}

} // namespace

Task<Result<std::vector<CalendarInfo>>> EvolutionCalendarStore::calendars(std::stop_token stop) {
    co_return co_await service_.run(
        std::move(stop),
        [](EvolutionDesktop& desktop, const TimeZone&,
           GCancellable* cancellable) -> Result<std::vector<CalendarInfo>> {
            std::vector<CalendarInfo> found;
            for (const auto& each : desktop.sources(SourceKind::events)) {
                const auto writable = desktop.with<bool>(SourceKind::events, each.id, cancellable,
                                                         [](EClient* client, GLibError&) -> Result<bool> {
                                                             return !e_client_is_readonly(client);
                                                         });
                if (!writable && writable.error().as<Abandoned>()) return fail(writable.error());
                found.push_back({each.id, each.name, each.account, writable.value_or(false)});
            }
            return found;
        });
}

Task<Result<std::optional<std::string>>> EvolutionCalendarStore::defaultCalendar(std::stop_token stop) {
    co_return co_await service_.run(
        std::move(stop),
        [](EvolutionDesktop& desktop, const TimeZone&, GCancellable*) -> Result<std::optional<std::string>> {
            return desktop.defaultSource(SourceKind::events);
        });
}

Task<Result<std::vector<CalendarEvent>>> EvolutionCalendarStore::events(Date from, Date to,
                                                                        std::vector<std::string> calendars,
                                                                        std::size_t limit,
                                                                        std::stop_token stop) {
    if (to <= from || limit == 0) co_return std::vector<CalendarEvent>();
    co_return co_await service_.run(
        std::move(stop), [gathering = Gathering(from, to, limit), calendars = std::move(calendars)](
                             EvolutionDesktop& desktop, const TimeZone& local, GCancellable* cancellable) {
            return gather(desktop, gathering, calendars, local, cancellable);
        });
}

Task<Result<std::optional<CalendarEvent>>> EvolutionCalendarStore::event(std::string id,
                                                                         std::stop_token stop) {
    co_return co_await service_.run(
        std::move(stop),
        [id = std::move(id)](EvolutionDesktop& desktop, const TimeZone& local, GCancellable* cancellable) {
            return withEvent(desktop, id, local, cancellable, std::optional<CalendarEvent>(),
                             [](const CalendarCall&, const EventId& named, const EventSeries&,
                                const Occurrence& found) -> Result<std::optional<CalendarEvent>> {
                                 return told(found, named.source);
                             });
        });
}

Task<Result<std::string>> EvolutionCalendarStore::create(NewCalendarEvent event, std::stop_token stop) {
    co_return co_await service_.run(std::move(stop), [event = std::move(event)](EvolutionDesktop& desktop,
                                                                                const TimeZone& local,
                                                                                GCancellable* cancellable) {
        // Made once, so that a second attempt has the same id.
        const auto component = newComponent(I_CAL_VEVENT_COMPONENT);
        return inCalendar<std::string>(
            desktop, event.calendar, local, cancellable,
            [&](const CalendarCall& call) -> Result<std::string> {
                setText(component.get(), I_CAL_SUMMARY_PROPERTY, event.title);
                if (event.location) setText(component.get(), I_CAL_LOCATION_PROPERTY, *event.location);
                CHECK(setTimes(call, component.get(),
                               {floor<seconds>(event.start), floor<seconds>(event.end)}));
                CHECK(call.create(component.get()));
                return EventId{event.calendar, i_cal_component_get_uid(component.get()), ""}.text();
            });
    });
}

Task<Result<bool>> EvolutionCalendarStore::update(std::string id, CalendarEventChange wanted,
                                                  std::stop_token stop) {
    co_return co_await service_.run(
        std::move(stop), [id = std::move(id), wanted = std::move(wanted)](
                             EvolutionDesktop& desktop, const TimeZone& local, GCancellable* cancellable) {
            return withEvent(desktop, id, local, cancellable, false,
                             [&](const CalendarCall& call, const EventId&, const EventSeries&,
                                 const Occurrence& found) { return change(call, found, wanted); });
        });
}

Task<Result<bool>> EvolutionCalendarStore::remove(std::string id, std::stop_token stop) {
    co_return co_await service_.run(
        std::move(stop),
        [id = std::move(id)](EvolutionDesktop& desktop, const TimeZone& local, GCancellable* cancellable) {
            return withEvent(desktop, id, local, cancellable, false, &erase);
        });
}

} // namespace morvex
