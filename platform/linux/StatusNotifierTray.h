#pragma once

#include "platform/linux/BusSignal.h"
#include "platform/ports/Tray.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>

#include <functional>
#include <memory>

namespace morvex {

/// The tray reported by the session bus (StatusNotifierWatcher): both a watcher, which collects the items,
/// and a host, which shows them, must be there. Otherwise the tray `otherwise` decides. Main thread.
class StatusNotifierTray final : public Tray {
  public:
    /// `otherwise` must outlive this object.
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
