#include "app/ui/ApprovalNotice.h"

#include <QPointer>

#include <utility>

namespace morvex {

ApprovalNotice::ApprovalNotice(ApprovalModel& approval, Notifications& notifications)
    : approval_(approval), notifications_(notifications) {
    connect(&approval_, &ApprovalModel::changed, this, &ApprovalNotice::follow);
}

ApprovalNotice::~ApprovalNotice() {
    if (!shown_.isEmpty()) notifications_.withdraw();
}

void ApprovalNotice::follow() {
    auto id = approval_.requestId();
    if (std::exchange(shown_, id) == id) return;
    if (id.isEmpty()) return notifications_.withdraw();
    const std::string approve = "approve";
    auto onAction = [approval = QPointer<ApprovalModel>(&approval_), id, approve](const std::string& key) {
        if (!approval) return;
        if (key == approve)
            approval->approve(id);
        else if (key == "refuse")
            approval->refuse(id);
    };
    notifications_.show(
        {.title = tr("Čeká na potvrzení: %1").arg(approval_.title()).toStdString(),
         .body = {},
         .actions = {{approve, tr("Potvrdit").toStdString()}, {"refuse", tr("Zamítnout").toStdString()}},
         .onAction = onAction});
}

} // namespace morvex
