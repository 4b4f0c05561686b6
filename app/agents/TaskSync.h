#pragma once

#include "app/agents/AgentReports.h"
#include "app/agents/HistorieAgentu.h"
#include "app/link/PhoneLink.h"
#include "shared/wire/MacPayload.h"

#include <functional>
#include <memory>
#include <utility>

namespace morvex {

/// Keeps the phone informed of the agents' tasks. A task counts as delivered only when the phone acknowledges
/// it; until then it is sent again whenever the phone reconnects. Main thread.
class TaskSync final : public AgentReports {
  public:
    TaskSync(HistorieAgentu& historie, PhoneLink& spojeni, std::function<Task<void>()> poslatStav)
        : historie_(historie), phoneLink_(spojeni), poslatStav_(std::move(poslatStav)) {}

    Task<void> poslatStav() override { return poslatStav_(); }

    Task<void> poslatUkol(UkolAgenta ukol) override;
    Task<void> sendProgress(std::string text, std::string requestID) override;

    void potvrzeno(const MacPayload::WorkItemAck& acknowledgement);

    /// Sends the unacknowledged tasks one after the other, as long as this link is the current one.
    Task<void> catchUp(std::shared_ptr<SecureLink> link);

  private:
    HistorieAgentu& historie_;
    PhoneLink& phoneLink_;
    std::function<Task<void>()> poslatStav_;
};

} // namespace morvex
