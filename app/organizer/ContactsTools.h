#pragma once

#include "app/organizer/CallLimit.h"
#include "app/organizer/MacContactsService.h"
#include "app/tools/ToolTable.h"

#include <functional>
#include <utility>

namespace morvex {

struct ContactQuery;

/// The tool that finds contacts. Main thread only.
class ContactsTools {
  public:
    /// `contacts` outlives this object.
    ContactsTools(MacContactsService& contacts, CallLimit limit)
        : contacts_(contacts), limit_(std::move(limit)) {}

    void addTo(ToolTable& table, std::function<bool()> isOn);

  private:
    Task<ToolOutcome> find(ContactQuery query, ToolCall call);

    MacContactsService& contacts_;
    CallLimit limit_;
};

} // namespace morvex
