#include "platform/linux/evolution/EvolutionReminderStore.h"

#include "foundation/TextFilter.h"
#include "platform/linux/evolution/CalendarObjects.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <iterator>

namespace morvex {

namespace {

using namespace std::chrono;

template <class T, class Work>
Result<T> inList(EvolutionDesktop& desktop, const std::string& list, const TimeZone& local,
                 GCancellable* cancellable, Work work) {
    return desktop.with<T>(SourceKind::tasks, list, cancellable,
                           [&](EClient* client, GLibError& error) -> Result<T> {
                               return work(CalendarCall{E_CAL_CLIENT(client), local, cancellable, error});
                           });
}

bool isCompleted(ICalComponent* component) {
    return i_cal_component_get_status(component) == I_CAL_STATUS_COMPLETED ||
           firstProperty(component, I_CAL_COMPLETED_PROPERTY);
}

std::optional<IcalTime> dueOf(ICalComponent* component, const CalendarCall& call) {
    if (auto due = IcalTime::of(component, I_CAL_DUE_PROPERTY, call.zones())) return due;
    auto start = IcalTime::of(component, I_CAL_DTSTART_PROPERTY, call.zones());
    if (!start || !firstProperty(component, I_CAL_DURATION_PROPERTY)) return std::nullopt;
    return start->at(start->wall + lengthOf(component, *start, call.local, call.zones()));
}

/// Of a series its next time, which completing it moves on.
std::string keyOf(ICalComponent* component, const EventSeries& series, const CalendarCall& call) {
    if (firstProperty(component, I_CAL_RECURRENCEID_PROPERTY))
        return series.keyOf(component, call.local, call.zones());
    if (!recurs(component)) return "";
    auto time = dueOf(component, call);
    if (!time) time = IcalTime::of(component, I_CAL_DTSTART_PROPERTY, call.zones());
    return time ? time->key() : "";
}

Reminder told(ICalComponent* component, const EventId& id, const std::string& list,
              const CalendarCall& call) {
    const auto due = dueOf(component, call);
    return {.id = id.text(),
            .title = textOf(component, I_CAL_SUMMARY_PROPERTY).value_or(""),
            .completed = isCompleted(component),
            .list = list,
            .due = due ? std::optional<Date>(due->instant(call.local)) : std::nullopt};
}

std::string uidOf(ICalComponent* component) {
    const char* uid = i_cal_component_get_uid(component);
    return uid ? uid : "";
}

Result<std::vector<Reminder>> inOneList(const CalendarCall& call, const EvolutionDesktop::Source& list,
                                        bool includeCompleted) {
    TRY(auto, components, call.query(includeCompleted ? "#t" : "(not (is-completed?))"));
    std::vector<Reminder> found;
    for (const auto& each : components) {
        if (isCancelled(each.get()) || (!includeCompleted && isCompleted(each.get()))) continue;
        const EventId id{list.id, uidOf(each.get()), keyOf(each.get(), EventSeries(), call)};
        found.push_back(told(each.get(), id, list.name, call));
    }
    return found;
}

void setProperty(ICalComponent* component, ICalProperty* property) {
    i_cal_component_take_property(component, property);
}

/// An alarm that shows the title at a moment.
Component alarmAt(const std::string& title, sys_seconds moment) {
    Component alarm(i_cal_component_new_valarm());
    GLibHandle<char, g_free> uid(e_util_generate_uid());
    i_cal_component_set_uid(alarm.get(), uid.get());
    setProperty(alarm.get(), i_cal_property_new_action(I_CAL_ACTION_DISPLAY));
    if (!title.empty()) i_cal_component_set_description(alarm.get(), title.c_str());
    GLibHandle<ICalTrigger> trigger(i_cal_trigger_new_from_int(0));
    const IcalTime time{IcalTime::Kind::utc, moment.time_since_epoch(), nullptr, ""};
    auto value = time.value();
    i_cal_trigger_set_time(trigger.get(), value.get());
    GLibHandle<ICalProperty> property(i_cal_property_new_trigger(trigger.get()));
    i_cal_property_take_parameter(property.get(), i_cal_parameter_new_value(I_CAL_VALUE_DATETIME));
    i_cal_component_take_property(alarm.get(), property.release());
    return alarm;
}

/// With a point, whatever the language of the system.
std::string decimal(double number, int digits) {
    std::array<char, 400> text{};
    const auto end =
        std::to_chars(text.data(), text.data() + text.size(), number, std::chars_format::fixed, digits);
    return {text.data(), end.ptr};
}

void addParameter(ICalProperty* property, const char* name, const std::string& value) {
    GLibHandle<ICalParameter> parameter(i_cal_parameter_new_x(value.c_str()));
    i_cal_parameter_set_xname(parameter.get(), name);
    i_cal_property_take_parameter(property, parameter.release());
}

/// A place as devices understand it that share the list (X-APPLE-…), with a time long past, since every alarm
/// must have one.
Component alarmAtPlace(const std::string& title, const PlaceAlarm& place) {
    auto alarm = alarmAt(title, sys_seconds(seconds(197'168'145)));
    GLibHandle<ICalProperty> proximity(i_cal_property_new_x(place.onArrival ? "ARRIVE" : "DEPART"));
    i_cal_property_set_x_name(proximity.get(), "X-APPLE-PROXIMITY");
    i_cal_component_take_property(alarm.get(), proximity.release());
    GLibHandle<ICalProperty> location(i_cal_property_new_x(""));
    i_cal_property_set_x_name(location.get(), "X-APPLE-STRUCTURED-LOCATION");
    i_cal_property_take_parameter(location.get(), i_cal_parameter_new_value(I_CAL_VALUE_URI));
    addParameter(location.get(), "X-APPLE-RADIUS", decimal(place.radius, 0));
    // No parameter can have a quotation mark or a line break.
    auto name = foreignWords(place.place.name);
    std::ranges::replace(name, '"', '\'');
    if (!name.empty()) addParameter(location.get(), "X-TITLE", name);
    const auto address = "geo:" + decimal(place.place.latitude, 6) + "," + decimal(place.place.longitude, 6);
    i_cal_property_take_value(location.get(), i_cal_value_new_uri(address.c_str()));
    i_cal_component_take_property(alarm.get(), location.release());
    return alarm;
}

Result<void> fill(const CalendarCall& call, ICalComponent* component, const NewReminder& reminder) {
    const auto title = storedText(reminder.title);
    if (!title.empty()) i_cal_component_set_summary(component, title.c_str());
    if (reminder.due) {
        const auto minute = floor<minutes>(*reminder.due);
        TRY(auto, due, call.localTime(minute));
        setTime(component, I_CAL_DUE_PROPERTY, due);
        i_cal_component_take_component(component, alarmAt(title, minute).release());
    }
    if (reminder.placeAlarm) {
        const auto place = storedText(reminder.placeAlarm->place.name);
        if (!place.empty()) i_cal_component_set_location(component, place.c_str());
        i_cal_component_take_component(component, alarmAtPlace(title, *reminder.placeAlarm).release());
    }
    return {};
}

ICalComponent* componentOf(const EventSeries& series, const EventId& id, const CalendarCall& call) {
    for (const auto& each : series.changed())
        if (keyOf(each.get(), EventSeries(), call) == id.recurrence) return each.get();
    return series.master();
}

Result<std::optional<Reminder>> completeOne(const CalendarCall& call, const EventId& id,
                                            const std::string& list) {
    TRY(auto, series, call.series(id.uid));
    auto* component = componentOf(series, id, call);
    if (!component || i_cal_component_isa(component) != I_CAL_VTODO_COMPONENT) return std::nullopt;
    auto reminder = told(component, id, list, call);
    const auto next = keyOf(component, EventSeries(), call);
    if (next.empty() != id.recurrence.empty()) return std::nullopt;
    // Completing moves a series on, so an occurrence before its next one is completed.
    const bool isOver = next > id.recurrence;
    if (next < id.recurrence) return std::nullopt;
    if (!reminder.completed && !isOver) {
        if (!e_cal_util_mark_task_complete_sync(component, static_cast<time_t>(-1), call.client,
                                                call.cancellable, call.error.slot()))
            return call.failure();
        const bool isOne = firstProperty(component, I_CAL_RECURRENCEID_PROPERTY) != nullptr;
        CHECK(call.modify(component, isOne ? E_CAL_OBJ_MOD_THIS : E_CAL_OBJ_MOD_ALL));
    }
    reminder.completed = true;
    return reminder;
}

} // namespace

Task<Result<std::vector<ReminderList>>> EvolutionReminderStore::lists(std::stop_token stop) {
    co_return co_await service_.run(std::move(stop),
                                    [](EvolutionDesktop& desktop, const TimeZone&,
                                       GCancellable* cancellable) -> Result<std::vector<ReminderList>> {
                                        std::vector<ReminderList> found;
                                        for (const auto& each : desktop.sources(SourceKind::tasks)) {
                                            const auto writable = desktop.with<bool>(
                                                SourceKind::tasks, each.id, cancellable,
                                                [](EClient* client, GLibError&) -> Result<bool> {
                                                    return !e_client_is_readonly(client);
                                                });
                                            if (!writable && writable.error().as<Abandoned>())
                                                return fail(writable.error());
                                            found.push_back({each.id, each.name, writable.value_or(false)});
                                        }
                                        return found;
                                    });
}

Task<Result<std::optional<std::string>>> EvolutionReminderStore::defaultList(std::stop_token stop) {
    co_return co_await service_.run(
        std::move(stop),
        [](EvolutionDesktop& desktop, const TimeZone&, GCancellable*) -> Result<std::optional<std::string>> {
            return desktop.defaultSource(SourceKind::tasks);
        });
}

Task<Result<std::vector<Reminder>>> EvolutionReminderStore::reminders(bool includeCompleted,
                                                                      std::stop_token stop) {
    co_return co_await service_.run(
        std::move(stop),
        [includeCompleted](EvolutionDesktop& desktop, const TimeZone& local,
                           GCancellable* cancellable) -> Result<std::vector<Reminder>> {
            std::vector<Reminder> all;
            AnswersTogether answers;
            for (const auto& list : desktop.sources(SourceKind::tasks)) {
                auto found = inList<std::vector<Reminder>>(
                    desktop, list.id, local, cancellable,
                    [&](const CalendarCall& call) { return inOneList(call, list, includeCompleted); });
                if (!answers.add(found)) break;
                if (found) std::ranges::move(*found, std::back_inserter(all));
            }
            CHECK(answers.outcome());
            return all;
        });
}

Task<Result<std::string>> EvolutionReminderStore::create(NewReminder reminder, std::stop_token stop) {
    co_return co_await service_.run(
        std::move(stop), [reminder = std::move(reminder)](EvolutionDesktop& desktop, const TimeZone& local,
                                                          GCancellable* cancellable) {
            const auto blank = newComponent(I_CAL_VTODO_COMPONENT);
            return inList<std::string>(desktop, reminder.list, local, cancellable,
                                       [&](const CalendarCall& call) -> Result<std::string> {
                                           const Component component(i_cal_component_clone(blank.get()));
                                           CHECK(fill(call, component.get(), reminder));
                                           CHECK(call.create(component.get()));
                                           return EventId{reminder.list, uidOf(component.get()), ""}.text();
                                       });
        });
}

Task<Result<std::optional<Reminder>>> EvolutionReminderStore::complete(std::string id, std::stop_token stop) {
    co_return co_await service_.run(
        std::move(stop),
        [text = std::move(id)](EvolutionDesktop& desktop, const TimeZone& local,
                               GCancellable* cancellable) -> Result<std::optional<Reminder>> {
            const auto id = EventId::parse(text);
            if (!id) return std::nullopt;
            for (const auto& list : desktop.sources(SourceKind::tasks))
                if (list.id == id->source)
                    return inList<std::optional<Reminder>>(
                        desktop, list.id, local, cancellable,
                        [&](const CalendarCall& call) { return completeOne(call, *id, list.name); });
            return std::nullopt;
        });
}

} // namespace morvex
