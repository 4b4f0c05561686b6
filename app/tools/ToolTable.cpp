#include "app/tools/ToolTable.h"

#include "shared/base/Require.h"
#include "shared/wire/ToolCatalogue.h"

#include <algorithm>

namespace morvex {

namespace {

std::size_t rank(const std::string& name) {
    const auto& all = ToolCatalogue::descriptors();
    auto found = std::ranges::find(all, name, &ToolDescriptor::name);
    return static_cast<std::size_t>(found - all.begin());
}

std::size_t rankOf(const Tool& tool) {
    return rank(tool.descriptor.name);
}

} // namespace

void ToolTable::add(std::string_view name, std::function<bool()> isOffered,
                    std::function<Task<ToolOutcome>(ToolCall)> run) {
    const auto* descriptor = ToolCatalogue::find(name);
    vyzaduj(descriptor != nullptr && find(name) == nullptr, "a tool is unknown or was added twice");
    auto behind = std::ranges::upper_bound(tools_, rank(descriptor->name), {}, rankOf);
    tools_.insert(behind, Tool{*descriptor, std::move(isOffered), std::move(run)});
}

std::vector<ToolDescriptor> ToolTable::offered() const {
    std::vector<ToolDescriptor> offer;
    for (const auto& tool : tools_)
        if (tool.isOffered()) offer.push_back(tool.descriptor);
    return offer;
}

const Tool* ToolTable::find(std::string_view name) const {
    auto found = std::ranges::find(
        tools_, name, [](const Tool& tool) -> const std::string& { return tool.descriptor.name; });
    return found == tools_.end() ? nullptr : &*found;
}

} // namespace morvex
