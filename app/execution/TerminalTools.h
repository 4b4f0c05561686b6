#pragma once

#include "app/execution/Slozky.h"
#include "app/execution/TerminalBridge.h"
#include "app/tools/ToolTable.h"

#include <functional>
#include <stop_token>

namespace morvex {

struct CommandToRun;

/// The tool `mac.terminal.run`. Main thread.
class TerminalTools {
  public:
    /// `stop` ends a running command, as the call's own `abandonment` does.
    TerminalTools(const Slozky& slozky, TerminalBridge::Services services, std::stop_token stop)
        : slozky_(slozky), terminal_(services), stop_(std::move(stop)) {}

    /// It is offered while `isOn` and at least one folder is allowed.
    void addTo(ToolTable& table, std::function<bool()> isOn);

  private:
    Task<ToolOutcome> run(CommandToRun command, ToolCall call);

    const Slozky& slozky_;
    TerminalBridge terminal_;
    std::stop_token stop_;
};

} // namespace morvex
