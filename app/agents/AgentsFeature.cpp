#include "app/agents/AgentsFeature.h"

#include "app/agents/AgentId.h"
#include "app/features/FeatureContext.h"

#include <string>
#include <utility>

namespace morvex {

namespace {

std::string inShort(const AgentStatus& agent) {
    if (agent.version) return *agent.version;
    return agent.problem ? agent.problem->czech() : "nenainstalováno";
}

std::optional<RunningTask> runningTask(const Bezici* bezici) {
    if (!bezici) return std::nullopt;
    return RunningTask{bezici->requestID, bezici->workItemID, bezici->nastroj, bezici->zacatek,
                       bezici->prubeh};
}

AgentTools::Folders foldersOf(const Slozky& slozky) {
    return {[&slozky] { return slozky.aliasy(); },
            [&slozky](const std::optional<std::string>& alias) { return slozky.slozkaProAlias(alias); },
            [&slozky](const std::string& cesta) { return slozky.isAllowed(cesta); }};
}

} // namespace

AgentsFeature::AgentsFeature(FeatureContext& context, const Slozky& slozky, ProgramDiscovery& programs)
    : Feature(context),
      integrations_(context.integrations),
      main_(context.services.main),
      runner_({context.services.processes, context.clock(), programs, context.services.main,
               context.services.workers},
              context.scope.token()),
      historie_(HistorieAgentu::create(context.services.folders.applicationSupport(),
                                       {context.saving(), context.random(), context.services.opener})),
      sync_(*historie_, context.phone, context.poslatStav),
      tools_(runner_, *historie_, sync_, foldersOf(slozky), context.scope) {
    tools_.addTo(context.tools, offer());
    context.inbox.take<MacPayload::WorkItemAck>(
        [this](MacPayload::WorkItemAck acknowledgement, const Delivery&) {
            return potvrzeno(acknowledgement);
        });
}

AgentTools::Offer AgentsFeature::offer() const {
    auto isUsable = [this](Integration integration, const QProperty<AgentStatus>& stav) {
        return
            [this, integration, &stav] { return integrations_.isOn(integration) && stav.value().installed; };
    };
    return {.codex = isUsable(Integration::codex, stav_.codex),
            .claude = isUsable(Integration::claude, stav_.claude),
            .rename = [this] {
                return integrations_.isOn(Integration::codex) || integrations_.isOn(Integration::claude);
            }};
}

void AgentsFeature::addTo(MacStatus& status) const {
    status.claude = toldOf(Integration::claude, stav_.claude);
    status.codex = toldOf(Integration::codex, stav_.codex);
    status.runningTask = runningTask(runner_.bezici());
}

AgentStatus AgentsFeature::toldOf(Integration integration, const AgentStatus& detected) const {
    return integrations_.isOn(integration) ? detected : AgentStatus{false, {}, {}, "Vypnuto"_sentence};
}

void AgentsFeature::addTo(boost::json::object& answer) const {
    answer["claude"] = inShort(stav_.claude);
    answer["codex"] = inShort(stav_.codex);
    answer["busy"] = runner_.bezici() ? runner_.bezici()->nastroj : "";
}

Task<void> AgentsFeature::refresh() {
    TaskScope detections(main_);
    detections.spawn(detect(AgentId::claudeCode, &stav_.claude));
    detections.spawn(detect(AgentId::codex, &stav_.codex));
    co_await detections.join();
}

Task<void> AgentsFeature::detect(std::string_view nastroj, QProperty<AgentStatus>* stav) {
    *stav = co_await runner_.zjisti(std::string(nastroj));
}

Task<void> AgentsFeature::potvrzeno(MacPayload::WorkItemAck acknowledgement) {
    sync_.potvrzeno(acknowledgement);
    co_return;
}

Task<void> AgentsFeature::catchUp(std::shared_ptr<SecureLink> link) {
    return sync_.catchUp(std::move(link));
}

Task<void> AgentsFeature::saved() {
    return historie_->saved();
}

} // namespace morvex
