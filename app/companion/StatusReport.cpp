#include "app/companion/StatusReport.h"

#include "shared/base/FrameLimit.h"
#include "shared/base/Utf8.h"
#include "shared/wire/Json.h"

#include <boost/json/value.hpp>

#include <algorithm>
#include <utility>

namespace morvex {

namespace {

/// Limits of a shortened report: bytes of each text, and bytes of each list as JSON.
constexpr std::size_t longestText = 1000;
constexpr std::size_t longestList = frameLimit / 4;

void shorten(std::string& text) {
    text = clipped(text, longestText);
}

void shorten(std::optional<std::string>& text) {
    if (text) shorten(*text);
}

void shorten(AgentStatus& agent) {
    shorten(agent.version);
    shorten(agent.source);
    if (agent.problem && agent.problem->czech().size() > longestText)
        agent.problem = Sentence(clipped(agent.problem->czech(), longestText));
}

std::size_t sizeOf(const ToolDescriptor& tool) {
    return encode(tool).size() + 1;
}

std::size_t sizeOf(const std::string& text) {
    return encode(boost::json::value(text)).size() + 1;
}

template <class Item> void dropWhatDoesNotFit(std::vector<Item>& list) {
    std::size_t kept = 0;
    std::erase_if(list, [&kept](const Item& item) {
        const auto size = sizeOf(item);
        if (kept + size > longestList) return true;
        kept += size;
        return false;
    });
}

} // namespace

MacStatus StatusReport::at(Date now, std::vector<ToolDescriptor> tools) const {
    MacStatus status;
    status.protocolVersion = ProtocolVersion::current;
    status.appVersion = appVersion;
    status.deviceName = deviceName;
    status.tools = std::move(tools);
    status.onPower = naNapajeni;
    status.sentAt = now;
    for (const auto* feature : features) feature->addTo(status);
    return status;
}

MacStatus shortened(MacStatus status) {
    shorten(status.appVersion);
    shorten(status.deviceName);
    shorten(status.claude);
    shorten(status.codex);
    dropWhatDoesNotFit(status.tools);
    dropWhatDoesNotFit(status.allowedFolders);
    if (auto& task = status.runningTask) {
        shorten(task->requestID);
        shorten(task->tool);
        shorten(task->progress);
    }
    return status;
}

boost::json::object StatusReport::forTool(const std::vector<ToolDescriptor>& offer) const {
    boost::json::array names;
    for (const auto& tool : offer) names.emplace_back(tool.name);
    boost::json::object answer{{"device", deviceName},
                               {"app_version", appVersion},
                               {"tools", std::move(names)},
                               {"claude", ""},
                               {"codex", ""},
                               {"folders", boost::json::array()},
                               {"busy", ""}};
    for (const auto* feature : features) feature->addTo(answer);
    return answer;
}

} // namespace morvex
