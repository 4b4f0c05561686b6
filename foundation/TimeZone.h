#pragma once

#include "shared/base/Date.h"

#include <chrono>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

namespace morvex {

/// What a calendar and a clock on the wall show (Gregorian).
struct WallTime {
    std::chrono::year_month_day day;
    std::chrono::seconds sinceMidnight{0}; ///< by the clock, whatever has been skipped or came twice

    bool operator==(const WallTime&) const = default;
};

/// The rules by which the clocks of a region are set (IANA Time Zone Database). From any thread.
class TimeZone {
  public:
    /// By its name, as "Europe/Prague". Nothing where no zone is called that.
    static std::optional<TimeZone> named(const std::string& name);

    [[nodiscard]] const std::string& name() const { return name_; }

    /// East of UTC is positive.
    [[nodiscard]] std::chrono::seconds offset(Date at) const;

    [[nodiscard]] WallTime wallTime(Date at) const;

    /// When the clocks show this. Of two moments the earlier one; a time that was skipped counts as if the
    /// clocks had been set later, so that 2:30 becomes 3:30. Nothing for a day that no calendar has.
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
