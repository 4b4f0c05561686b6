#include "phone/TaskText.h"

#include "foundation/Printable.h"

#include <string_view>

namespace morvex {

namespace {

std::string agentText(const WorkItem& item) {
    if (!item.agent) return "";
    const auto& folder = item.agent->folderAlias;
    return printableLine(item.agent->tool + (folder ? " ve složce " + *folder : "") + ", ");
}

} // namespace

std::string taskText(const WorkItem& item) {
    auto text = item.title + " — " + std::string(item.status.words());
    const auto& told = item.lastError ? item.lastError : item.summary;
    return printableLine(told ? text + ": " + *told : text);
}

std::vector<StyledLine> taskLines(const WorkItem& item) {
    return {{{taskText(item)}},
            {{"  " + agentText(item) + formatDate(item.updatedAt) + ", work_item_id " + item.id.text(),
              Style::faint}}};
}

} // namespace morvex
