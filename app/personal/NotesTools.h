#pragma once

#include "app/personal/PoznamkyStore.h"
#include "app/tools/ToolTable.h"

#include <functional>

namespace morvex {

struct NoteChange;
struct NoteRemoval;
struct NotesSearch;
struct NewNote;

/// The tools `mac.notes.*`. Main thread.
class NotesTools {
  public:
    explicit NotesTools(PoznamkyStore& poznamky) : poznamky_(poznamky) {}

    void addTo(ToolTable& table, std::function<bool()> isOn);

  private:
    Task<ToolOutcome> search(NotesSearch search, ToolCall call);
    Task<ToolOutcome> create(NewNote note, ToolCall call);
    Task<ToolOutcome> update(NoteChange change, ToolCall call);
    Task<ToolOutcome> remove(NoteRemoval removal, ToolCall call);

    PoznamkyStore& poznamky_;
};

} // namespace morvex
