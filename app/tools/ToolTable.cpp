#include "app/tools/ToolTable.h"

#include "shared/base/Require.h"
#include "shared/wire/ToolCatalogue.h"

#include <algorithm>
#include <array>
#include <iterator>
#include <utility>

namespace morvex {

namespace {

/// The phone has data of these kinds itself, so it learns of these tools from the offer, not from the status.
constexpr std::array<std::string_view, 4> unlistedPrefixes{"mac.calendar.", "mac.notes.", "mac.reminders.",
                                                           "mac.contacts."};

bool isUnlisted(std::string_view name) {
    return std::ranges::any_of(unlistedPrefixes,
                               [name](std::string_view prefix) { return name.starts_with(prefix); });
}

/// The place of the tool in the catalogue; a tool that is not there comes after all others.
std::size_t rankOf(std::string_view name) {
    const auto& all = ToolCatalogue::descriptors();
    auto found = std::ranges::find(all, name, &ToolDescriptor::name);
    return static_cast<std::size_t>(found - all.begin());
}

std::vector<ToolDescriptor> descriptorsOf(const std::vector<std::shared_ptr<const Tool>>& tools,
                                          bool (*isWanted)(const Tool&)) {
    std::vector<ToolDescriptor> descriptors;
    for (const auto& tool : tools)
        if (isWanted(*tool)) descriptors.push_back(tool->descriptor);
    return descriptors;
}

} // namespace

ToolDescriptor ToolTable::descriptorOf(std::string_view name) {
    const auto* descriptor = ToolCatalogue::find(name);
    require(descriptor != nullptr, "the catalogue lacks a tool");
    return *descriptor;
}

void ToolTable::add(Tool tool) {
    require(find(tool.descriptor.name) == nullptr, "a tool was added twice");
    const auto rank = rankOf(tool.descriptor.name);
    add({rank, std::make_shared<const Tool>(std::move(tool)), nullptr});
}

void ToolTable::add(const ToolSource& source, std::string_view behind) {
    add({rankOf(behind), nullptr, &source});
}

void ToolTable::add(Entry entry) {
    // A source stands behind the tool of the same rank, whichever was added first.
    const auto place = std::ranges::upper_bound(
        entries_, std::pair(entry.rank, entry.source != nullptr), {},
        [](const Entry& known) { return std::pair(known.rank, known.source != nullptr); });
    entries_.insert(place, std::move(entry));
}

std::vector<std::shared_ptr<const Tool>> ToolTable::all() const {
    std::vector<std::shared_ptr<const Tool>> tools;
    for (const auto& entry : entries_) {
        if (entry.tool) tools.push_back(entry.tool);
        if (entry.source) std::ranges::move(entry.source->tools(), std::back_inserter(tools));
    }
    return tools;
}

std::vector<ToolDescriptor> ToolTable::offered() const {
    return descriptorsOf(all(), [](const Tool& tool) { return tool.isOffered(); });
}

std::vector<ToolDescriptor> ToolTable::inStatus() const {
    return descriptorsOf(all(), [](const Tool& tool) {
        return tool.isInStatus && !isUnlisted(tool.descriptor.name) && tool.isOffered();
    });
}

std::shared_ptr<const Tool> ToolTable::find(std::string_view name) const {
    const auto tools = all();
    auto found = std::ranges::find(
        tools, name, [](const auto& tool) -> const std::string& { return tool->descriptor.name; });
    return found == tools.end() ? nullptr : *found;
}

} // namespace morvex
