#pragma once

#include "shared/base/Date.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// Date (Gregorian) and time of day as calendars and clocks show them.
struct WallTime {
    std::chrono::year_month_day day;
    std::chrono::seconds sinceMidnight{0}; ///< by the clock, even if hours were skipped

    bool operator==(const WallTime&) const = default;
};

/// The rules by which the clocks of a region are set (IANA Time Zone Database). From any thread.
class TimeZone {
  public:
    /// The zone of this name, such as "Europe/Prague". Nothing if there is no such zone.
    static std::optional<TimeZone> named(const std::string& name);

    [[nodiscard]] const std::string& name() const { return name_; }

    /// East of UTC is positive.
    [[nodiscard]] std::chrono::seconds offset(Date at) const;

    [[nodiscard]] WallTime wallTime(Date at) const;

    /// The moment at which the clocks show this. If there are two, the earlier one; a skipped time counts as
    /// if the clocks were not yet changed, so that 2:30 becomes 3:30. Nothing if the calendar does not have
    /// the day.
    [[nodiscard]] std::optional<Date> moment(const WallTime& shown) const;

    /// The first moment of the day that the calendar shows then. Days may have 23 or 25 hours and need not
    /// begin at midnight.
    [[nodiscard]] Date startOfDay(Date at) const;

  private:
    struct Rules;

    TimeZone(std::string name, std::shared_ptr<const Rules> rules);

    std::string name_;
    std::shared_ptr<const Rules> rules_;
};

} // namespace morvex
