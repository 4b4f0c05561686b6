#pragma once

#include "app/agents/UkolAgenta.h"
#include "foundation/Task.h"

#include <string>

namespace morvex {

/// What the phone is told while an agent works. Main thread only. Without a link nothing is sent, and a
/// lost send is no failure.
class AgentReports {
  public:
    virtual ~AgentReports() = default;

    virtual Task<void> poslatStav() = 0;
    virtual Task<void> poslatUkol(UkolAgenta ukol) = 0;
    /// Under the id of the call that began the task.
    virtual Task<void> poslatPrubeh(std::string text, std::string requestID) = 0;
};

} // namespace morvex
