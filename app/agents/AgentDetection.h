#pragma once

#include "app/agents/AgentAdapter.h"
#include "app/programs/ProgramDiscovery.h"
#include "app/programs/VysledekProcesu.h"
#include "foundation/Clock.h"
#include "foundation/Task.h"
#include "platform/ports/ProcessLauncher.h"
#include "shared/wire/MacStatus.h"

#include <memory>
#include <optional>
#include <stop_token>
#include <string>

namespace morvex {

/// Finds out whether an agent is installed and usable. References given to it outlive it.
class AgentDetection {
  public:
    /// `stop` ends the programs that are being asked.
    AgentDetection(ProcessLauncher& launcher, Clock& clock, ProgramDiscovery& discovery, std::stop_token stop)
        : launcher_(launcher), clock_(clock), discovery_(discovery), stop_(std::move(stop)) {}

    /// Never fails: `problem` says what is wrong. Asks the agent for its version (15 seconds at most) and its
    /// login. `cancellation` ends these programs too; their answers are then missing.
    Task<AgentStatus> zjisti(std::shared_ptr<const AgentAdapter> adapter, std::stop_token cancellation);

  private:
    Task<Sentence> notFoundText(std::shared_ptr<const AgentAdapter> adapter);
    Task<std::optional<std::string>> programVersion(OutsideProgram program, std::stop_token cancellation);
    Task<std::optional<VysledekProcesu>> runSuccessfully(OutsideProgram program, Clock::Duration limit,
                                                         std::stop_token cancellation);

    ProcessLauncher& launcher_;
    Clock& clock_;
    ProgramDiscovery& discovery_;
    std::stop_token stop_;
};

} // namespace morvex
