#include "app/ui/ApprovalNotice.h"

#include <QPointer>

#include <utility>

namespace morvex {

namespace {

const std::string approve = "approve";
const std::string refuse = "refuse";

} // namespace

ApprovalNotice::ApprovalNotice(ApprovalModel& approval, Notifications& notifications,
                               std::function<void()> openWindow)
    : approval_(approval), notifications_(notifications), openWindow_(std::move(openWindow)) {
    connect(&approval_, &ApprovalModel::changed, this, &ApprovalNotice::follow);
}

ApprovalNotice::~ApprovalNotice() {
    if (!shown_.isEmpty()) notifications_.withdraw();
}

void ApprovalNotice::follow() {
    auto id = approval_.requestId();
    if (std::exchange(shown_, id) == id) return;
    if (id.isEmpty()) return notifications_.withdraw();
    notifications_.show({.title = tr("Čeká na potvrzení: %1").arg(approval_.title()).toStdString(),
                         .body = {},
                         .actions = {{Notifications::pressedItself, "Morvex"},
                                     {approve, tr("Potvrdit").toStdString()},
                                     {refuse, tr("Zamítnout").toStdString()}},
                         .onAction = [self = QPointer<ApprovalNotice>(this), id](const std::string& key) {
                             if (self) self->act(id, key);
                         }});
}

void ApprovalNotice::act(const QString& id, const std::string& key) {
    if (key == approve)
        approval_.approve(id);
    else if (key == refuse)
        approval_.refuse(id);
    else if (key == Notifications::pressedItself)
        openWindow_();
}

} // namespace morvex
