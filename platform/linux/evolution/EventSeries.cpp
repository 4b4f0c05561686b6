#include "platform/linux/evolution/EventSeries.h"

#include <algorithm>
#include <set>
#include <utility>

namespace morvex {

namespace {

using namespace std::chrono;

Occurrence occurrence(ICalComponent* component, const IcalTime& start, seconds length,
                      const TimeZone& local) {
    Occurrence made;
    made.component = component;
    made.start = start;
    made.length = length;
    made.begins = start.instant(local);
    made.ends = start.at(start.wall + length).instant(local);
    if (start.kind == IcalTime::Kind::day) made.ends -= seconds(1);
    made.ends = std::max(made.begins, made.ends);
    return made;
}

std::optional<Occurrence> ofComponent(ICalComponent* component, const TimeZone& local,
                                      const ZoneLookup& zones) {
    const auto start = IcalTime::of(component, I_CAL_DTSTART_PROPERTY, zones);
    if (!start) return std::nullopt;
    return occurrence(component, *start, lengthOf(component, *start, local, zones), local);
}

bool overlaps(const Occurrence& each, sys_seconds from, sys_seconds to) {
    if (each.begins >= to) return false;
    return each.ends > from || each.begins >= from;
}

/// A moment at which an occurrence of this key begins, give or take a day.
std::optional<sys_seconds> momentOf(const std::string& key) {
    GLibHandle<ICalTime> time(i_cal_time_new_from_string(key.c_str()));
    const auto read = IcalTime::of(time.get(), nullptr, [](const char*) { return nullptr; });
    if (!read) return std::nullopt;
    return sys_seconds(read->wall);
}

} // namespace

bool isCancelled(ICalComponent* component) {
    return i_cal_component_get_status(component) == I_CAL_STATUS_CANCELLED;
}

std::map<std::string, EventSeries> EventSeries::grouped(std::vector<Component> components) {
    std::map<std::string, EventSeries> groups;
    for (auto& component : components) {
        const char* uid = i_cal_component_get_uid(component.get());
        if (!uid) continue;
        auto& series = groups[uid];
        if (firstProperty(component.get(), I_CAL_RECURRENCEID_PROPERTY))
            series.changed_.push_back(std::move(component));
        else
            series.master_ = std::move(component);
    }
    return groups;
}

std::string EventSeries::keyOf(ICalComponent* changed, const TimeZone& local, const ZoneLookup& zones) const {
    const auto planned = IcalTime::of(changed, I_CAL_RECURRENCEID_PROPERTY, zones);
    if (!planned) return "";
    const auto start =
        master_ ? IcalTime::of(master_.get(), I_CAL_DTSTART_PROPERTY, zones) : std::optional<IcalTime>();
    if (!start || start->kind == planned->kind) return planned->key();
    if (start->kind == IcalTime::Kind::day || planned->kind == IcalTime::Kind::floating)
        return start->at(planned->wall).key();
    return start->at(start->wallAt(planned->instant(local), local)).key();
}

std::vector<Occurrence> EventSeries::between(sys_seconds from, sys_seconds to, const TimeZone& local,
                                             const ZoneLookup& zones) const {
    std::vector<Occurrence> found;
    std::set<std::string> replaced;
    for (const auto& each : changed_) {
        const auto key = keyOf(each.get(), local, zones);
        if (!replaced.insert(key).second) continue;
        auto own = ofComponent(each.get(), local, zones);
        if (!own || isCancelled(each.get()) || !overlaps(*own, from, to)) continue;
        own->key = key;
        found.push_back(*std::move(own));
    }
    if (!master_ || isCancelled(master_.get())) return found;
    const bool isSeries = recurs(master_.get());
    for (const auto& planned : plannedBetween(master_.get(), from, to, local, zones)) {
        auto each = occurrence(master_.get(), planned.start, planned.length, local);
        if (!overlaps(each, from, to)) continue;
        each.isOwn = !isSeries;
        if (isSeries) each.key = planned.start.key();
        if (!isSeries || !replaced.contains(each.key)) found.push_back(std::move(each));
    }
    return found;
}

std::optional<Occurrence> EventSeries::named(const std::string& key, const TimeZone& local,
                                             const ZoneLookup& zones) const {
    if (key.empty()) {
        if (!master_ || recurs(master_.get())) return std::nullopt;
        return ofComponent(master_.get(), local, zones);
    }
    for (const auto& each : changed_) {
        if (keyOf(each.get(), local, zones) != key) continue;
        auto own = ofComponent(each.get(), local, zones);
        if (own) own->key = key;
        return own;
    }
    const auto moment = momentOf(key);
    if (!moment) return std::nullopt;
    for (auto& each : between(*moment - days(2), *moment + days(2), local, zones))
        if (each.key == key) return std::move(each);
    return std::nullopt;
}

} // namespace morvex
