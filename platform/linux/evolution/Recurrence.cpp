#include "platform/linux/evolution/Recurrence.h"

#include <algorithm>
#include <map>
#include <set>
#include <utility>

namespace morvex {

namespace {

using namespace std::chrono;
using Rule = GLibHandle<ICalRecurrence>;

constexpr int mostSteps = 50'000;
/// RFC 5545 advises against more than one; a rule that never comes true takes half a second.
constexpr int mostRules = 4;
/// More than any clock is ever changed by.
constexpr hours slack{3};

struct Window {
    seconds from;
    seconds to;
};

bool has(GLibHandle<GArray, g_array_unref> list) {
    return list && list->len > 0 && g_array_index(list.get(), gshort, 0) != I_CAL_RECURRENCE_ARRAY_MAX;
}

bool hasConditions(ICalRecurrence* rule) {
    using List = GLibHandle<GArray, g_array_unref>;
    return has(List(i_cal_recurrence_get_by_second_array(rule))) ||
           has(List(i_cal_recurrence_get_by_minute_array(rule))) ||
           has(List(i_cal_recurrence_get_by_hour_array(rule))) ||
           has(List(i_cal_recurrence_get_by_day_array(rule))) ||
           has(List(i_cal_recurrence_get_by_month_day_array(rule))) ||
           has(List(i_cal_recurrence_get_by_year_day_array(rule))) ||
           has(List(i_cal_recurrence_get_by_week_no_array(rule))) ||
           has(List(i_cal_recurrence_get_by_month_array(rule))) ||
           has(List(i_cal_recurrence_get_by_set_pos_array(rule)));
}

/// Whether the library finds the next occurrence, or that there is none, within a second.
bool isFound(ICalRecurrence* rule) {
    using List = GLibHandle<GArray, g_array_unref>;
    const bool byDayOfYear = has(List(i_cal_recurrence_get_by_year_day_array(rule))) ||
                             has(List(i_cal_recurrence_get_by_week_no_array(rule)));
    switch (i_cal_recurrence_get_freq(rule)) {
    case I_CAL_SECONDLY_RECURRENCE:
    case I_CAL_MINUTELY_RECURRENCE:
    case I_CAL_HOURLY_RECURRENCE:
        return !hasConditions(rule);
    case I_CAL_WEEKLY_RECURRENCE:
        return !byDayOfYear && !has(List(i_cal_recurrence_get_by_month_day_array(rule)));
    case I_CAL_DAILY_RECURRENCE:
    case I_CAL_MONTHLY_RECURRENCE:
        return !byDayOfYear;
    case I_CAL_YEARLY_RECURRENCE:
        return true;
    default:
        return false;
    }
}

/// What the rules of this kind give within the window.
void addRules(std::map<seconds, seconds>& found, ICalComponent* component, ICalPropertyKind kind,
              const IcalTime& start, seconds length, Window window) {
    int steps = 0;
    int rules = 0;
    for (auto property = firstProperty(component, kind); property && rules < mostRules;
         property = nextProperty(component, kind), ++rules) {
        Rule rule(kind == I_CAL_RRULE_PROPERTY ? i_cal_property_get_rrule(property.get())
                                               : i_cal_property_get_exrule(property.get()));
        if (!rule || !isFound(rule.get())) continue;
        GLibHandle<ICalRecurIterator> iterator(i_cal_recur_iterator_new(rule.get(), start.value().get()));
        if (!iterator) continue;
        const auto first = start.at(window.from - length);
        if (i_cal_recurrence_get_count(rule.get()) == 0 && first.wall > start.wall)
            i_cal_recur_iterator_set_start(iterator.get(), first.value().get());
        while (steps++ < mostSteps) {
            GLibHandle<ICalTime> next(i_cal_recur_iterator_next(iterator.get()));
            // Without a zone: the clock of the start counts on.
            const auto time = IcalTime::of(next.get(), nullptr, [](const char*) { return nullptr; });
            if (!time || time->wall >= window.to) break;
            if (time->wall + length >= window.from) found.emplace(time->wall, length);
        }
    }
}

void addDates(std::map<seconds, seconds>& found, ICalComponent* component, const IcalTime& start,
              seconds length, const TimeZone& local, const ZoneLookup& zones) {
    for (auto property = firstProperty(component, I_CAL_RDATE_PROPERTY); property;
         property = nextProperty(component, I_CAL_RDATE_PROPERTY)) {
        GLibHandle<ICalDatetimeperiod> value(i_cal_property_get_rdate(property.get()));
        if (!value) continue;
        GLibHandle<ICalParameter> parameter(
            i_cal_property_get_first_parameter(property.get(), I_CAL_TZID_PARAMETER));
        const char* zone = parameter ? i_cal_parameter_get_tzid(parameter.get()) : nullptr;
        GLibHandle<ICalTime> time(i_cal_datetimeperiod_get_time(value.get()));
        GLibHandle<ICalPeriod> period(i_cal_datetimeperiod_get_period(value.get()));
        auto own = length;
        if (!time || i_cal_time_is_null_time(time.get())) {
            if (!period) continue;
            time.reset(i_cal_period_get_start(period.get()));
            GLibHandle<ICalTime> end(i_cal_period_get_end(period.get()));
            GLibHandle<ICalDuration> lasts(i_cal_period_get_duration(period.get()));
            const auto begins = IcalTime::of(time.get(), zone, zones);
            const auto ends = IcalTime::of(end.get(), zone, zones);
            if (begins && ends)
                own = ends->wall - begins->wall;
            else if (lasts)
                own = seconds(i_cal_duration_as_int(lasts.get()));
        }
        const auto date = IcalTime::of(time.get(), zone, zones);
        if (!date) continue;
        const bool sameClock = date->kind == start.kind && date->zone == start.zone;
        found.emplace(sameClock || date->kind == IcalTime::Kind::floating || start.kind == IcalTime::Kind::day
                          ? start.at(date->wall).wall
                          : start.wallAt(date->instant(local), local),
                      std::max(own, seconds(0)));
    }
}

/// Takes out what the dates of exception name: a moment, a time by the clock of the start, or a whole day.
void dropDates(std::map<seconds, seconds>& found, ICalComponent* component, const IcalTime& start,
               const TimeZone& local, const ZoneLookup& zones) {
    std::set<seconds> dropped;
    std::set<days> droppedDays;
    for (auto property = firstProperty(component, I_CAL_EXDATE_PROPERTY); property;
         property = nextProperty(component, I_CAL_EXDATE_PROPERTY)) {
        const auto date = IcalTime::of(property.get(), zones);
        if (!date) continue;
        if (date->kind == IcalTime::Kind::day || start.kind == IcalTime::Kind::day)
            droppedDays.insert(floor<days>(date->wall));
        else
            dropped.insert(date->kind == IcalTime::Kind::floating
                               ? date->wall
                               : start.wallAt(date->instant(local), local));
    }
    std::erase_if(found, [&](const auto& each) {
        return dropped.contains(each.first) || droppedDays.contains(floor<days>(each.first));
    });
}

} // namespace

bool recurs(ICalComponent* component) {
    return firstProperty(component, I_CAL_RRULE_PROPERTY) || firstProperty(component, I_CAL_RDATE_PROPERTY);
}

seconds lengthOf(ICalComponent* component, const IcalTime& start, const TimeZone& local,
                 const ZoneLookup& zones) {
    const bool isDay = start.kind == IcalTime::Kind::day;
    seconds length = isDay ? days(1) : seconds(0);
    if (const auto end = IcalTime::of(component, I_CAL_DTEND_PROPERTY, zones)) {
        const bool sameClock = end->kind == start.kind && end->zone == start.zone;
        length = sameClock ? end->wall - start.wall : end->instant(local) - start.instant(local);
    } else if (const auto property = firstProperty(component, I_CAL_DURATION_PROPERTY)) {
        GLibHandle<ICalDuration> lasts(i_cal_property_get_duration(property.get()));
        if (lasts) length = seconds(i_cal_duration_as_int(lasts.get()));
    }
    if (isDay) return std::max<seconds>(ceil<days>(length), days(1));
    return std::max(length, seconds(0));
}

std::vector<Planned> plannedBetween(ICalComponent* component, sys_seconds from, sys_seconds to,
                                    const TimeZone& local, const ZoneLookup& zones) {
    const auto start = IcalTime::of(component, I_CAL_DTSTART_PROPERTY, zones);
    if (!start) return {};
    const auto length = lengthOf(component, *start, local, zones);
    const Window window{start->wallAt(from, local) - slack, start->wallAt(to, local) + slack};
    std::map<seconds, seconds> found;
    found.emplace(start->wall, length);
    addRules(found, component, I_CAL_RRULE_PROPERTY, *start, length, window);
    addDates(found, component, *start, length, local, zones);
    if (firstProperty(component, I_CAL_EXRULE_PROPERTY)) {
        std::map<seconds, seconds> dropped;
        addRules(dropped, component, I_CAL_EXRULE_PROPERTY, *start, length, window);
        for (const auto& [wall, unused] : dropped) found.erase(wall);
    }
    dropDates(found, component, *start, local, zones);
    std::vector<Planned> planned;
    for (const auto& [wall, own] : found)
        if (wall < window.to && wall + own >= window.from) planned.push_back({start->at(wall), own});
    return planned;
}

} // namespace morvex
