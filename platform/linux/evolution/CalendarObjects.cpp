#include "platform/linux/evolution/CalendarObjects.h"

#include <utility>

namespace morvex {

ZoneLookup CalendarCall::zones() const {
    return [*this](const char* id) -> ICalTimezone* {
        const auto [asked, isNew] = zonesAskedFor->try_emplace(id, nullptr);
        auto*& zone = asked->second;
        if (!isNew) return zone;
        zone = i_cal_timezone_get_builtin_timezone(id);
        if (!zone) zone = i_cal_timezone_get_builtin_timezone_from_tzid(id);
        // One that the calendar does not define either counts as the zone of this computer.
        if (!zone) e_cal_client_get_timezone_sync(client, id, &zone, cancellable, nullptr);
        return zone;
    };
}

Result<std::vector<Component>> CalendarCall::query(const std::string& expression) const {
    GSList* list = nullptr;
    if (!e_cal_client_get_object_list_sync(client, expression.c_str(), &list, cancellable, error.slot()))
        return failure();
    std::vector<Component> found;
    for (GSList* node = list; node; node = node->next) found.emplace_back(I_CAL_COMPONENT(node->data));
    g_slist_free(list);
    return found;
}

Result<EventSeries> CalendarCall::series(const std::string& uid) const {
    GSList* list = nullptr;
    if (!e_cal_client_get_objects_for_uid_sync(client, uid.c_str(), &list, cancellable, error.slot())) {
        if (error.is(E_CAL_CLIENT_ERROR, E_CAL_CLIENT_ERROR_OBJECT_NOT_FOUND)) return EventSeries();
        return failure();
    }
    std::vector<Component> found;
    for (GSList* node = list; node; node = node->next)
        found.emplace_back(
            i_cal_component_clone(e_cal_component_get_icalcomponent(E_CAL_COMPONENT(node->data))));
    g_slist_free_full(list, g_object_unref);
    auto groups = EventSeries::grouped(std::move(found));
    const auto group = groups.find(uid);
    return group == groups.end() ? EventSeries() : std::move(group->second);
}

Result<IcalTime> CalendarCall::localTime(std::chrono::sys_seconds moment) const {
    auto* zone = i_cal_timezone_get_builtin_timezone(local.name().c_str());
    if (!zone || zone == i_cal_timezone_get_utc_timezone())
        return IcalTime{IcalTime::Kind::utc, moment.time_since_epoch(), nullptr, ""};
    if (!e_cal_client_add_timezone_sync(client, zone, cancellable, error.slot())) return failure();
    IcalTime time{IcalTime::Kind::zoned, {}, zone, i_cal_timezone_get_tzid(zone)};
    return time.at(time.wallAt(moment, local));
}

Result<void> CalendarCall::create(ICalComponent* component) const {
    GLibHandle<char, g_free> uid;
    char* made = nullptr;
    if (!e_cal_client_create_object_sync(client, component, E_CAL_OPERATION_FLAG_NONE, &made, cancellable,
                                         error.slot())) {
        // The first attempt got there, though its answer was lost: no other object has this UID.
        if (error.is(E_CAL_CLIENT_ERROR, E_CAL_CLIENT_ERROR_OBJECT_ID_ALREADY_EXISTS)) return {};
        return failure();
    }
    uid.reset(made);
    // The calendar may have chosen another one.
    if (uid) i_cal_component_set_uid(component, uid.get());
    return {};
}

Result<void> CalendarCall::modify(ICalComponent* component, ECalObjModType which) const {
    if (!e_cal_client_modify_object_sync(client, component, which, E_CAL_OPERATION_FLAG_NONE, cancellable,
                                         error.slot()))
        return failure();
    return {};
}

Result<void> CalendarCall::remove(const std::string& uid, const char* recurrence) const {
    if (!e_cal_client_remove_object_sync(client, uid.c_str(), recurrence, E_CAL_OBJ_MOD_THIS,
                                         E_CAL_OPERATION_FLAG_NONE, cancellable, error.slot()))
        return failure();
    return {};
}

void removeAll(ICalComponent* component, ICalPropertyKind kind) {
    e_cal_util_component_remove_property_by_kind(component, kind, TRUE);
}

void setTime(ICalComponent* component, ICalPropertyKind kind, const IcalTime& time) {
    removeAll(component, kind);
    GLibHandle<ICalProperty> property(i_cal_property_new(kind));
    const bool isDay = time.kind == IcalTime::Kind::day;
    auto value = time.value();
    i_cal_property_take_value(property.get(), isDay ? i_cal_value_new_date(value.get())
                                                    : i_cal_value_new_datetime(value.get()));
    if (isDay) i_cal_property_take_parameter(property.get(), i_cal_parameter_new_value(I_CAL_VALUE_DATE));
    if (time.kind == IcalTime::Kind::zoned)
        i_cal_property_take_parameter(property.get(), i_cal_parameter_new_tzid(time.zoneId.c_str()));
    i_cal_component_take_property(component, property.release());
}

Component newComponent(ICalComponentKind kind) {
    Component made(i_cal_component_new(kind));
    GLibHandle<char, g_free> uid(e_util_generate_uid());
    i_cal_component_set_uid(made.get(), uid.get());
    GLibHandle<ICalTime> now(i_cal_time_new_current_with_zone(i_cal_timezone_get_utc_timezone()));
    i_cal_component_set_dtstamp(made.get(), now.get());
    return made;
}

} // namespace morvex
