#pragma once

#include "foundation/TimeZone.h"
#include "platform/linux/GLibHandle.h"
#include "shared/base/Date.h"

#include <libecal/libecal.h>

#include <chrono>
#include <functional>
#include <optional>
#include <string>

namespace morvex {

/// Finds the zone of a TZID, which may be defined by the calendar itself; null if nobody knows it.
using ZoneLookup = std::function<ICalTimezone*(const char* id)>;

/// A time as calendars have it (RFC 5545, section 3.3.5): a day, or a time by the clocks of some zone.
struct IcalTime {
    enum class Kind { day, floating, utc, zoned };

    Kind kind = Kind::floating;
    std::chrono::seconds wall{0}; ///< what the clock shows, counted as if it showed UTC
    ICalTimezone* zone = nullptr; ///< of `zoned`; belongs to its calendar
    std::string zoneId;           ///< its TZID

    /// The value of a property that holds one.
    static std::optional<IcalTime> of(ICalProperty* property, const ZoneLookup& zones);
    static std::optional<IcalTime> of(ICalTime* value, const char* zoneId, const ZoneLookup& zones);

    /// Of a component, its first property of this kind.
    static std::optional<IcalTime> of(ICalComponent* component, ICalPropertyKind kind,
                                      const ZoneLookup& zones);

    /// By the clocks of `local` where it has no zone of its own.
    [[nodiscard]] std::chrono::sys_seconds instant(const TimeZone& local) const;

    /// What the clocks that this one follows show then.
    [[nodiscard]] std::chrono::seconds wallAt(std::chrono::sys_seconds instant, const TimeZone& local) const;

    /// The same kind of time at another one.
    [[nodiscard]] IcalTime at(std::chrono::seconds other) const;

    [[nodiscard]] GLibHandle<ICalTime> value() const;

    /// As the recurrence of an `EventId`: times with a zone in UTC.
    [[nodiscard]] std::string key() const;

    /// As it stands in a component, without its zone.
    [[nodiscard]] std::string text() const;

    bool operator==(const IcalTime&) const = default;
};

/// The first property of this kind, or null.
GLibHandle<ICalProperty> firstProperty(ICalComponent* component, ICalPropertyKind kind);
GLibHandle<ICalProperty> nextProperty(ICalComponent* component, ICalPropertyKind kind);

/// The text of a property, or nothing if it is absent or empty.
std::optional<std::string> textOf(ICalComponent* component, ICalPropertyKind kind);

/// What a calendar stores of a text: without control characters except line breaks and tabs, 400,000 bytes at
/// most.
std::string storedText(const std::string& text);

} // namespace morvex
