#include "app/agents/TaskSync.h"

#include <utility>

namespace morvex {

Task<void> TaskSync::poslatUkol(UkolAgenta ukol) {
    // The phone must not learn of a task that a restart of this program would forget.
    co_await historie_.saved();
    auto requestID = "work-item:" + ukol.workItemID.text();
    (void)co_await phoneLink_.poslat({MacPayload::WorkItemUpdate{asWorkItem(ukol)}}, std::move(requestID));
}

Task<void> TaskSync::sendProgress(std::string text, std::string requestID) {
    (void)co_await phoneLink_.poslat({MacPayload::ToolProgress{std::move(text)}}, std::move(requestID));
}

void TaskSync::potvrzeno(const MacPayload::WorkItemAck& acknowledgement) {
    historie_.potvrd(acknowledgement.id, acknowledgement.revision);
}

Task<void> TaskSync::catchUp(std::shared_ptr<SecureLink> link) {
    for (auto& ukol : historie_.nedorucene()) {
        if (!link || phoneLink_.current() != link) co_return;
        co_await poslatUkol(std::move(ukol));
    }
}

} // namespace morvex
