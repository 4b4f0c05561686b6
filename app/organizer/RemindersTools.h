#pragma once

#include "app/organizer/CallLimit.h"
#include "app/organizer/MacRemindersService.h"
#include "app/tools/ToolTable.h"
#include "platform/ports/LocalTime.h"

#include <functional>
#include <optional>
#include <string>
#include <utility>

namespace morvex {

struct RemindersWanted;
struct ReminderArguments;
struct ReminderDone;

/// The tools for reminders. Main thread only.
class RemindersTools {
  public:
    /// Gives the address of a place that the user has named; any other text is an address itself.
    using ResolvePlace = std::function<std::optional<std::string>(std::optional<std::string>)>;

    /// Both outlive this object.
    RemindersTools(MacRemindersService& reminders, LocalTime& localTime, ResolvePlace resolvePlace,
                   CallLimit limit)
        : reminders_(reminders),
          localTime_(localTime),
          resolvePlace_(std::move(resolvePlace)),
          limit_(std::move(limit)) {}

    void addTo(ToolTable& table, const std::function<bool()>& isOn);

  private:
    Task<ToolOutcome> list(RemindersWanted wanted, ToolCall call);
    Task<ToolOutcome> create(ReminderArguments reminder, ToolCall call);
    Task<ToolOutcome> complete(ReminderDone done, ToolCall call);

    MacRemindersService& reminders_;
    LocalTime& localTime_;
    ResolvePlace resolvePlace_;
    CallLimit limit_;
};

} // namespace morvex
