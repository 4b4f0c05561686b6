#pragma once

#include "app/ui/models/ApprovalModel.h"
#include "platform/ports/Notifications.h"

#include <functional>

namespace morvex {

/// Shows the action that waits for a decision as a notification of the desktop, with both answers; a press of
/// the notification itself opens the window. The notification contains only the title, because it may be
/// visible on a locked screen. Main thread.
class ApprovalNotice final : public QObject {
    Q_OBJECT

  public:
    ApprovalNotice(ApprovalModel& approval, Notifications& notifications, std::function<void()> openWindow);
    ~ApprovalNotice() override;

  private:
    void follow();
    void act(const QString& id, const std::string& key);

    ApprovalModel& approval_;
    Notifications& notifications_;
    std::function<void()> openWindow_;
    QString shown_; ///< id of the request that is shown
};

} // namespace morvex
