#pragma once

#include "app/ui/models/ApprovalModel.h"
#include "platform/ports/Notifications.h"

namespace morvex {

/// Shows the action that waits for a decision as a notification of the desktop, with both answers. Its text
/// is the title alone: a notification may be seen on a locked screen. Main thread.
class ApprovalNotice final : public QObject {
    Q_OBJECT

  public:
    ApprovalNotice(ApprovalModel& approval, Notifications& notifications);
    ~ApprovalNotice() override;

  private:
    void follow();

    ApprovalModel& approval_;
    Notifications& notifications_;
    QString shown_; ///< id of the request that is shown
};

} // namespace morvex
