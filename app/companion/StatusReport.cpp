#include "app/companion/StatusReport.h"

#include <algorithm>
#include <array>
#include <string_view>
#include <utility>

namespace morvex {

namespace {

/// Data that the phone has of its own: it reaches these tools through the offer, not through the list.
constexpr std::array<std::string_view, 4> unlistedPrefixes{"mac.calendar.", "mac.notes.", "mac.reminders.",
                                                           "mac.contacts."};

bool isUnlisted(const ToolDescriptor& tool) {
    return std::ranges::any_of(unlistedPrefixes,
                               [&tool](std::string_view prefix) { return tool.name.starts_with(prefix); });
}

std::string inShort(const AgentStatus& agent) {
    if (agent.version) return *agent.version;
    return agent.problem.value_or("nenainstalováno");
}

std::optional<RunningTask> runningTask(const Bezici* bezici) {
    if (!bezici) return std::nullopt;
    return RunningTask{bezici->requestID, bezici->workItemID, bezici->nastroj, bezici->zacatek,
                       bezici->prubeh};
}

boost::json::array asArray(const std::vector<std::string>& texts) {
    boost::json::array array;
    for (const auto& text : texts) array.emplace_back(text);
    return array;
}

} // namespace

MacStatus StatusReport::at(Date now, std::vector<ToolDescriptor> offer) const {
    std::erase_if(offer, isUnlisted);
    MacStatus status;
    status.protocolVersion = ProtocolVersion::current;
    status.appVersion = appVersion;
    status.deviceName = deviceName;
    status.tools = std::move(offer);
    status.claude = agent(Integration::claude, state.stavClauda);
    status.codex = agent(Integration::codex, state.stavCodexu);
    status.mailAvailable = integrations.isOn(Integration::appleMail) && state.postaDostupna;
    status.allowedFolders = slozky.aliasy();
    status.runningTask = runningTask(agenti.bezici());
    status.onPower = naNapajeni;
    status.sentAt = now;
    return status;
}

boost::json::object StatusReport::forTool(const std::vector<ToolDescriptor>& offer) const {
    boost::json::array names;
    for (const auto& tool : offer) names.emplace_back(tool.name);
    return {{"device", deviceName},
            {"app_version", appVersion},
            {"tools", std::move(names)},
            {"claude", inShort(state.stavClauda)},
            {"codex", inShort(state.stavCodexu)},
            {"folders", asArray(slozky.aliasy())},
            {"busy", agenti.bezici() ? agenti.bezici()->nastroj : ""}};
}

AgentStatus StatusReport::agent(Integration integration, const AgentStatus& detected) const {
    return integrations.isOn(integration) ? detected : AgentStatus{false, {}, {}, "Vypnuto"};
}

} // namespace morvex
