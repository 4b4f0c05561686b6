#pragma once

#include "app/organizer/CallLimit.h"
#include "app/organizer/MacCalendarService.h"
#include "app/tools/ToolTable.h"
#include "platform/ports/LocalTime.h"

#include <functional>
#include <utility>

namespace morvex {

struct EventRange;
struct NewEvent;
struct EventUpdate;
struct EventRemoval;

/// The tools for calendars and their events. Main thread only.
class CalendarTools {
  public:
    /// Both outlive this object.
    CalendarTools(MacCalendarService& calendar, LocalTime& localTime, CallLimit limit)
        : calendar_(calendar), localTime_(localTime), limit_(std::move(limit)) {}

    void addTo(ToolTable& table, std::function<bool()> isOn);

  private:
    Task<ToolOutcome> calendars(NoArguments, ToolCall call);
    Task<ToolOutcome> list(EventRange range, ToolCall call);
    Task<ToolOutcome> create(NewEvent event, ToolCall call);
    Task<ToolOutcome> update(EventUpdate update, ToolCall call);
    Task<ToolOutcome> remove(EventRemoval removal, ToolCall call);
    [[nodiscard]] std::optional<Date> moment(const std::optional<std::string>& text) const;

    MacCalendarService& calendar_;
    LocalTime& localTime_;
    CallLimit limit_;
};

} // namespace morvex
