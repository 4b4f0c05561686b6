#pragma once

#include "app/agents/AgentRunner.h"
#include "app/agents/AgentTools.h"
#include "app/agents/HistorieAgentu.h"
#include "app/agents/TaskSync.h"
#include "app/execution/Slozky.h"
#include "app/features/Feature.h"
#include "app/settings/MacIntegrationSettings.h"
#include "shared/base/Sentence.h"

#include <QProperty>

#include <memory>
#include <optional>
#include <string_view>

namespace morvex {

/// The coding agents: which are installed, their tasks with the history, and their tools.
class AgentsFeature final : public Feature {
  public:
    /// Both references outlive it.
    AgentsFeature(FeatureContext& context, const Slozky& slozky, ProgramDiscovery& programs);

    /// The result of the last detection of each agent; views read and watch it.
    struct Stav {
        /// An agent's problem until its first detection has ended.
        static constexpr auto notKnownYet = "Zjišťuji…"_sentence;
        QProperty<AgentStatus> claude{AgentStatus{false, {}, {}, notKnownYet}};
        QProperty<AgentStatus> codex{AgentStatus{false, {}, {}, notKnownYet}};
    };

    [[nodiscard]] Stav& stav() { return stav_; }

    [[nodiscard]] HistorieAgentu& historie() { return *historie_; }

    [[nodiscard]] const AgentRunner& runner() const { return runner_; }

    /// Asks the agent to end if it works on this task or is about to start it.
    bool stopTask(const Uuid& workItemID) { return tools_.zastavit(workItemID); }

    /// The work item of the agent's current task, from its acceptance to its end.
    [[nodiscard]] std::optional<Uuid> currentTask() const { return tools_.currentTask(); }

    void addTo(MacStatus& status) const override;
    void addTo(boost::json::object& answer) const override;
    Task<void> refresh() override;
    Task<void> catchUp(std::shared_ptr<SecureLink> link) override;
    Task<void> saved() override;

  private:
    [[nodiscard]] AgentTools::Offer offer() const;
    [[nodiscard]] AgentStatus toldOf(Integration integration, const AgentStatus& detected) const;
    Task<void> detect(std::string_view nastroj, QProperty<AgentStatus>* stav);
    Task<void> potvrzeno(MacPayload::WorkItemAck acknowledgement);

    const MacIntegrationSettings& integrations_;
    Executor& main_;
    Stav stav_;
    AgentRunner runner_;
    std::unique_ptr<HistorieAgentu> historie_;
    TaskSync sync_;
    AgentTools tools_;
};

} // namespace morvex
