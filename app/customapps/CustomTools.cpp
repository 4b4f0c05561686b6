#include "app/customapps/CustomTools.h"

#include "foundation/Text.h"
#include "foundation/TextFilter.h"
#include "shared/wire/Json.h"

#include <boost/json/value.hpp>

#include <algorithm>
#include <optional>
#include <set>
#include <utility>

namespace morvex {

namespace {

constexpr const char* anyArguments = R"({"type":"object","properties":{}})";

std::string textIn(const boost::json::object& tool, std::string_view name) {
    const auto* value = tool.if_contains(name);
    return value && value->is_string() ? std::string(value->get_string()) : std::string();
}

bool isForReading(std::string_view member) {
    return member == "description" || member == "title" || member == "$comment";
}

/// Takes characters that nobody sees out of the texts that people read. Whether there are none elsewhere.
bool makeVisible(boost::json::value& value, bool isForReaders = false) {
    if (auto* text = value.if_string()) {
        if (isForReaders) *text = visibleText(*text);
        return !hasInvisible(*text);
    }
    if (auto* elements = value.if_array())
        return std::ranges::all_of(*elements, [](auto& element) { return makeVisible(element); });
    auto* members = value.if_object();
    return !members || std::ranges::all_of(*members, [](auto& member) {
        return !hasInvisible(member.key()) && makeVisible(member.value(), isForReading(member.key()));
    });
}

std::optional<std::string> schemaOf(const boost::json::object& tool) {
    for (const auto* name : {"inputSchema", "parameters"}) {
        const auto* schema = tool.if_contains(name);
        if (!schema || !schema->is_object()) continue;
        auto visible = *schema;
        return makeVisible(visible) ? std::optional(encode(visible)) : std::nullopt;
    }
    return anyArguments;
}

/// What a server says of a tool; nothing if it has no name, or if something is too long.
std::optional<DescribedTool> described(const boost::json::value& element) {
    const auto* tool = element.if_object();
    if (!tool) return std::nullopt;
    const auto name = textIn(*tool, "name");
    const auto description = textIn(*tool, "description");
    const bool isUsable = !name.empty() && name.size() <= customToolLimits::longestName &&
                          description.size() <= customToolLimits::longestDescription;
    auto schema = isUsable ? schemaOf(*tool) : std::nullopt;
    if (!schema || schema->size() > customToolLimits::longestSchema) return std::nullopt;
    return DescribedTool{name, visibleText(description), *std::move(schema)};
}

std::optional<ListedTool> listed(const boost::json::value& element) {
    auto tool = described(element);
    if (!tool) return std::nullopt;
    auto seen = SeenDescription::of(*tool);
    return ListedTool{*std::move(tool), std::move(seen)};
}

std::string summaryOf(const StoredApp& app, const DescribedTool& tool) {
    auto description = trim(tool.description);
    if (description.empty()) description = visibleText(tool.name);
    return visibleText(app.name) + ": " + description + ".";
}

} // namespace

std::string customToolName(std::string_view appID, std::string_view remoteName) {
    constexpr std::size_t prefixLength = 8;
    constexpr std::size_t longest = 62;
    std::string compact(appID);
    std::erase(compact, '-');
    const auto prefix = alphanumericText(lowerCase(excerpt(compact, prefixLength)));
    const auto name = "mac.custom." + prefix + "." + alphanumericText(remoteName);
    return excerpt(name, longest);
}

ToolList toolList(const boost::json::object& result) {
    const auto* elements = result.if_contains("tools");
    ToolList tools;
    if (!elements || !elements->is_array()) return tools;
    tools.reserve(elements->get_array().size());
    for (const auto& element : elements->get_array()) tools.push_back(listed(element));
    return tools;
}

std::vector<CustomTool> customTools(const StoredApp& app, const ToolList& list,
                                    const std::function<bool(const std::string&)>& isTaken) {
    std::vector<CustomTool> tools;
    std::set<std::string> own;
    const auto isFree = [&](const std::string& name) { return !own.contains(name) && !isTaken(name); };
    std::size_t position = 0;
    for (const auto& element : list) {
        ++position;
        if (!element) continue;
        if (tools.size() == customToolLimits::mostOfApp) break;
        const auto& described = element->described;
        auto name = customToolName(app.id, described.name);
        if (!isFree(name)) name += "." + std::to_string(position);
        if (!isFree(name)) continue;
        own.insert(name);
        ToolDescriptor descriptor{name, summaryOf(app, described), ToolRisk::change, described.schema, false};
        tools.push_back({described.name, std::move(descriptor), element->seen});
    }
    return tools;
}

} // namespace morvex
