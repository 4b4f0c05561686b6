#include "phone/StatusText.h"

#include "foundation/Text.h"
#include "shared/wire/Json.h"

#include <algorithm>
#include <chrono>
#include <cstdint>

namespace morvex {

namespace {

std::string padded(std::string text, std::size_t width) {
    auto length = countCharacters(text);
    if (length < width) text.append(width - length, ' ');
    return text;
}

StyledLine field(std::string_view label, std::string value, Style style = Style::plain) {
    constexpr std::size_t labelWidth = 11;
    return {{padded(std::string(label), labelWidth), Style::faint}, {std::move(value), style}};
}

StyledLine agentField(std::string_view label, const AgentStatus& agent) {
    if (!agent.installed)
        return field(label, agent.problem ? agent.problem->czech() : "není nainstalovaný", Style::faint);
    std::string text = agent.version.value_or("připravený");
    if (agent.source) text += " (" + *agent.source + ")";
    if (agent.problem) text += " — " + agent.problem->czech();
    return field(label, text, agent.problem ? Style::bad : Style::plain);
}

std::string runningText(const RunningTask& task, const TimeZone& zone) {
    auto text = task.tool + " od " + timeOfDay(task.startedAt, zone);
    return task.progress ? text + " — " + *task.progress : text;
}

std::string ageText(Date sentAt, Date now, const TimeZone& zone) {
    auto seconds = std::max<std::int64_t>(0, wholeSeconds(now) - wholeSeconds(sentAt));
    return timeOfDay(sentAt, zone) + " (před " + std::to_string(seconds) + " s)";
}

std::string twoDigits(std::int64_t number) {
    return (number < 10 ? "0" : "") + std::to_string(number);
}

Style riskStyle(ToolRisk risk) {
    if (risk >= ToolRisk::change) return Style::bad;
    return risk == ToolRisk::safeRead ? Style::good : Style::plain;
}

} // namespace

std::vector<StyledLine> statusLines(const MacStatus& status, Date now, const TimeZone& zone) {
    auto version = " (Morvex " + status.appVersion + ", protokol " + status.protocolVersion.text() + ")";
    std::vector<StyledLine> lines{field("Mac", status.deviceName, Style::strong)};
    lines.front().push_back({version});
    lines.push_back(field("Napájení", status.onPower ? "ze sítě" : "z baterie"));
    lines.push_back(
        field("Složky", status.allowedFolders.empty() ? "žádné" : join(status.allowedFolders, ", ")));
    lines.push_back(field("Pošta", status.mailAvailable ? "dostupná" : "nedostupná"));
    lines.push_back(agentField("Codex", status.codex));
    lines.push_back(agentField("Claude", status.claude));
    lines.push_back(
        field("Pracuje", status.runningTask ? runningText(*status.runningTask, zone) : "na ničem"));
    lines.push_back(field("Nástrojů", std::to_string(status.tools.size())));
    lines.push_back(field("Hlášeno", ageText(status.sentAt, now, zone)));
    return lines;
}

std::vector<StyledLine> toolLines(const std::vector<ToolDescriptor>& tools) {
    std::size_t nameWidth = countCharacters("NÁSTROJ");
    std::size_t riskWidth = countCharacters("RIZIKO");
    for (const auto& tool : tools) {
        nameWidth = std::max(nameWidth, countCharacters(tool.name));
        riskWidth = std::max(riskWidth, countCharacters(riskLabel(tool.risk)));
    }
    std::vector<StyledLine> lines{
        {{padded("NÁSTROJ", nameWidth + 2) + padded("RIZIKO", riskWidth + 2) + "POPIS", Style::faint}}};
    for (const auto& tool : tools)
        lines.push_back({{padded(tool.name, nameWidth + 2), Style::strong},
                         {padded(riskLabel(tool.risk), riskWidth + 2), riskStyle(tool.risk)},
                         {tool.summary}});
    return lines;
}

std::string toolsJson(const std::vector<ToolDescriptor>& tools) {
    std::vector<std::string> records;
    records.reserve(tools.size());
    for (const auto& tool : tools) records.push_back(encode(tool));
    return "[" + join(records, ",") + "]";
}

std::string timeOfDay(Date date, const TimeZone& zone) {
    const std::chrono::hh_mm_ss time(zone.wallTime(date).sinceMidnight);
    return twoDigits(time.hours().count()) + ":" + twoDigits(time.minutes().count()) + ":" +
           twoDigits(time.seconds().count());
}

} // namespace morvex
