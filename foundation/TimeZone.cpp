#include "foundation/TimeZone.h"

#include "foundation/IcuText.h"

#include <unicode/basictz.h>
#include <unicode/timezone.h>
#include <unicode/ucal.h>

#include <utility>

namespace morvex {

namespace {

using std::chrono::milliseconds;
using std::chrono::seconds;

/// The Unicode library counts time in milliseconds.
UDate toIcu(std::chrono::sys_seconds moment) {
    return static_cast<UDate>(milliseconds(moment.time_since_epoch()).count());
}

seconds fromIcu(std::int32_t rawOffset, std::int32_t saving) {
    return std::chrono::duration_cast<seconds>(milliseconds(std::int64_t{rawOffset} + saving));
}

} // namespace

struct TimeZone::Rules {
    explicit Rules(std::unique_ptr<const icu::BasicTimeZone> zone) : zone(std::move(zone)) {}

    std::unique_ptr<const icu::BasicTimeZone> zone;
};

TimeZone::TimeZone(std::string name, std::shared_ptr<const Rules> rules)
    : name_(std::move(name)), rules_(std::move(rules)) {}

std::optional<TimeZone> TimeZone::named(const std::string& name) {
    std::unique_ptr<icu::TimeZone> zone(icu::TimeZone::createTimeZone(icuText::fromUtf8(name)));
    if (!zone) return std::nullopt;
    // For an unknown name the library returns a zone with a special id.
    icu::UnicodeString found;
    if (zone->getID(found) == icu::UnicodeString(UCAL_UNKNOWN_ZONE_ID)) return std::nullopt;
    const auto* rules = dynamic_cast<const icu::BasicTimeZone*>(zone.get());
    if (!rules) return std::nullopt;
    zone.release();
    return TimeZone(name, std::make_shared<const Rules>(std::unique_ptr<const icu::BasicTimeZone>(rules)));
}

seconds TimeZone::offset(Date at) const {
    std::int32_t raw = 0;
    std::int32_t saving = 0;
    UErrorCode status = U_ZERO_ERROR;
    const auto moment = std::chrono::floor<seconds>(at);
    rules_->zone->getOffset(toIcu(moment), false, raw, saving, status);
    return fromIcu(raw, saving);
}

WallTime TimeZone::wallTime(Date at) const {
    const auto shown = std::chrono::floor<seconds>(at) + offset(at);
    const auto day = std::chrono::floor<std::chrono::days>(shown);
    return {std::chrono::year_month_day(day), shown - day};
}

std::optional<Date> TimeZone::moment(const WallTime& shown) const {
    if (!shown.day.ok()) return std::nullopt;
    const std::chrono::sys_seconds asIfUtc = std::chrono::sys_days(shown.day) + shown.sinceMidnight;
    std::int32_t raw = 0;
    std::int32_t saving = 0;
    UErrorCode status = U_ZERO_ERROR;
    rules_->zone->getOffsetFromLocal(toIcu(asIfUtc), UCAL_TZ_LOCAL_FORMER, UCAL_TZ_LOCAL_FORMER, raw, saving,
                                     status);
    return asIfUtc - fromIcu(raw, saving);
}

Date TimeZone::startOfDay(Date at) const {
    return *moment({wallTime(at).day, seconds(0)});
}

} // namespace morvex
