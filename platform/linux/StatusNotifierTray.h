#pragma once

#include "platform/linux/BusSignal.h"
#include "platform/ports/Tray.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>

#include <functional>
#include <memory>

namespace morvex {

/// The tray as the session bus tells of it (StatusNotifierWatcher): somebody has to collect the items, and
/// somebody has to show them. Where nobody does, another kind of tray may. Main thread.
class StatusNotifierTray final : public Tray {
  public:
    /// `otherwise` outlives this object.
    explicit StatusNotifierTray(Tray& otherwise, const QDBusConnection& bus = QDBusConnection::sessionBus());

    [[nodiscard]] bool isThere() const override { return shown_ || otherwise_.isThere(); }

    void onArrival(std::function<void()> arrived) override;

  private:
    void ask();
    void note(bool shown);

    Tray& otherwise_;
    QDBusConnection bus_;
    bool shown_ = false;
    std::function<void()> arrived_;
    std::unique_ptr<QDBusPendingCallWatcher> answer_;
    BusSignal came_;
    BusSignal went_;
    QDBusServiceWatcher collector_;
};

} // namespace morvex
