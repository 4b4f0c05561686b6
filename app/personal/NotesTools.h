#pragma once

#include "app/personal/PoznamkyStore.h"
#include "app/tools/ToolTable.h"

#include <functional>

namespace morvex {

/// The tools `mac.notes.*`. Main thread.
class NotesTools {
  public:
    explicit NotesTools(PoznamkyStore& poznamky) : poznamky_(poznamky) {}

    void addTo(ToolTable& table, std::function<bool()> isOn);

  private:
    Task<ToolOutcome> search(ToolCall call);
    Task<ToolOutcome> create(ToolCall call);
    Task<ToolOutcome> update(ToolCall call);
    Task<ToolOutcome> remove(ToolCall call);

    PoznamkyStore& poznamky_;
};

} // namespace morvex
