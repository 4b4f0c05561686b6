#pragma once

#include "app/agents/AgentReports.h"
#include "app/agents/HistorieAgentu.h"
#include "app/link/PhoneLink.h"
#include "shared/wire/MacPayload.h"

#include <functional>
#include <memory>
#include <utility>

namespace morvex {

/// Keeps the agents' tasks in step with the phone. A task counts as delivered only by the phone's own
/// acknowledgement; until then it goes out again whenever the phone is back. Main thread.
class TaskSync final : public AgentReports {
  public:
    TaskSync(HistorieAgentu& historie, PhoneLink& spojeni, std::function<Task<void>()> poslatStav)
        : historie_(historie), phoneLink_(spojeni), poslatStav_(std::move(poslatStav)) {}

    Task<void> poslatStav() override;
    Task<void> poslatUkol(UkolAgenta ukol) override;
    Task<void> poslatPrubeh(std::string text, std::string requestID) override;

    void potvrzeno(const MacPayload::WorkItemAck& potvrzeni);

    /// Sends what the phone has not acknowledged, one after the other, for as long as this link is the
    /// present one.
    Task<void> doplnit(std::shared_ptr<SecureLink> link);

  private:
    HistorieAgentu& historie_;
    PhoneLink& phoneLink_;
    std::function<Task<void>()> poslatStav_;
};

} // namespace morvex
