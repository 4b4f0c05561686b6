#include "platform/linux/evolution/IcalTime.h"

#include "shared/base/Utf8.h"

#include <array>
#include <cstdio>

namespace morvex {

namespace {

using namespace std::chrono;

constexpr std::size_t longestStored = 400'000;

std::optional<seconds> wallOf(ICalTime* value) {
    if (!value || i_cal_time_is_null_time(value) || !i_cal_time_is_valid_time(value)) return std::nullopt;
    const year_month_day day{year(i_cal_time_get_year(value)),
                             month(static_cast<unsigned>(i_cal_time_get_month(value))),
                             std::chrono::day(static_cast<unsigned>(i_cal_time_get_day(value)))};
    if (!day.ok()) return std::nullopt;
    auto wall = sys_days(day).time_since_epoch() + seconds(0);
    if (!i_cal_time_is_date(value))
        wall += hours(i_cal_time_get_hour(value)) + minutes(i_cal_time_get_minute(value)) +
                seconds(i_cal_time_get_second(value));
    return wall;
}

std::string written(seconds wall, bool isDay) {
    const auto midnight = floor<days>(wall);
    const year_month_day day{sys_days(midnight)};
    const hh_mm_ss time(wall - midnight);
    std::array<char, 64> text{};
    const int length =
        std::snprintf(text.data(), text.size(), isDay ? "%04d%02u%02u" : "%04d%02u%02uT%02d%02d%02d",
                      int(day.year()), unsigned(day.month()), unsigned(day.day()), int(time.hours().count()),
                      int(time.minutes().count()), int(time.seconds().count()));
    return {text.data(), static_cast<std::size_t>(length)};
}

} // namespace

std::optional<IcalTime> IcalTime::of(ICalTime* value, const char* zoneId, const ZoneLookup& zones) {
    const auto wall = wallOf(value);
    if (!wall) return std::nullopt;
    if (i_cal_time_is_date(value)) return IcalTime{Kind::day, *wall, nullptr, ""};
    if (i_cal_time_is_utc(value)) return IcalTime{Kind::utc, *wall, nullptr, ""};
    auto* zone = zoneId ? zones(zoneId) : nullptr;
    if (!zone) return IcalTime{Kind::floating, *wall, nullptr, ""};
    return IcalTime{Kind::zoned, *wall, zone, zoneId};
}

std::optional<IcalTime> IcalTime::of(ICalProperty* property, const ZoneLookup& zones) {
    GLibHandle<ICalValue> value(i_cal_property_get_value(property));
    if (!value) return std::nullopt;
    const auto kind = i_cal_value_isa(value.get());
    GLibHandle<ICalTime> time;
    if (kind == I_CAL_DATE_VALUE) time.reset(i_cal_value_get_date(value.get()));
    if (kind == I_CAL_DATETIME_VALUE) time.reset(i_cal_value_get_datetime(value.get()));
    GLibHandle<ICalParameter> zone(i_cal_property_get_first_parameter(property, I_CAL_TZID_PARAMETER));
    return of(time.get(), zone ? i_cal_parameter_get_tzid(zone.get()) : nullptr, zones);
}

std::optional<IcalTime> IcalTime::of(ICalComponent* component, ICalPropertyKind kind,
                                     const ZoneLookup& zones) {
    const auto property = firstProperty(component, kind);
    return property ? of(property.get(), zones) : std::nullopt;
}

sys_seconds IcalTime::instant(const TimeZone& local) const {
    if (kind == Kind::utc) return sys_seconds(wall);
    if (kind == Kind::zoned) return sys_seconds(seconds(i_cal_time_as_timet_with_zone(value().get(), zone)));
    const sys_seconds shown(wall);
    const auto midnight = floor<days>(shown);
    const auto moment = local.moment({year_month_day(midnight), shown - midnight});
    return moment ? floor<seconds>(*moment) : shown;
}

seconds IcalTime::wallAt(sys_seconds instant, const TimeZone& local) const {
    if (kind == Kind::utc) return instant.time_since_epoch();
    if (kind != Kind::zoned) return instant.time_since_epoch() + local.offset(Date(instant));
    GLibHandle<ICalTime> there(
        i_cal_time_new_from_timet_with_zone(instant.time_since_epoch().count(), FALSE, zone));
    return wallOf(there.get()).value_or(instant.time_since_epoch());
}

IcalTime IcalTime::at(seconds other) const {
    auto changed = *this;
    changed.wall = kind == Kind::day ? floor<days>(other) : other;
    return changed;
}

GLibHandle<ICalTime> IcalTime::value() const {
    GLibHandle<ICalTime> time(i_cal_time_new_from_string((text() + (kind == Kind::utc ? "Z" : "")).c_str()));
    if (kind == Kind::zoned) i_cal_time_set_timezone(time.get(), zone);
    return time;
}

std::string IcalTime::text() const {
    return written(wall, kind == Kind::day);
}

std::string IcalTime::key() const {
    if (kind == Kind::utc) return text() + "Z";
    if (kind != Kind::zoned) return text();
    return written(seconds(i_cal_time_as_timet_with_zone(value().get(), zone)), false) + "Z";
}

GLibHandle<ICalProperty> firstProperty(ICalComponent* component, ICalPropertyKind kind) {
    return GLibHandle<ICalProperty>(i_cal_component_get_first_property(component, kind));
}

GLibHandle<ICalProperty> nextProperty(ICalComponent* component, ICalPropertyKind kind) {
    return GLibHandle<ICalProperty>(i_cal_component_get_next_property(component, kind));
}

std::optional<std::string> textOf(ICalComponent* component, ICalPropertyKind kind) {
    const auto property = firstProperty(component, kind);
    if (!property) return std::nullopt;
    GLibHandle<ICalValue> value(i_cal_property_get_value(property.get()));
    const char* text = value ? i_cal_value_get_text(value.get()) : nullptr;
    if (!text || !*text) return std::nullopt;
    return repairUtf8(text);
}

std::string storedText(const std::string& text) {
    std::string kept;
    for (const char letter : firstBytes(repairUtf8(text), longestStored)) {
        const auto byte = static_cast<unsigned char>(letter);
        if (byte >= 0x20 ? byte != 0x7f : letter == '\n' || letter == '\t') kept += letter;
    }
    return kept;
}

} // namespace morvex
