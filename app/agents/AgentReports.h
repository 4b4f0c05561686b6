#pragma once

#include "app/agents/UkolAgenta.h"
#include "foundation/Task.h"

#include <string>

namespace morvex {

/// Sends reports to the phone while an agent works. Main thread only. Nothing is sent without a link, and a
/// lost report is not an error.
class AgentReports {
  public:
    virtual ~AgentReports() = default;

    virtual Task<void> poslatStav() = 0;
    virtual Task<void> poslatUkol(UkolAgenta ukol) = 0;
    /// Sent under the id of the call that began the task.
    virtual Task<void> sendProgress(std::string text, std::string requestID) = 0;
};

} // namespace morvex
