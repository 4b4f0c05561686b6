#pragma once

#include "platform/linux/BusSignal.h"
#include "platform/ports/Tray.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>

#include <functional>
#include <memory>
#include <utility>

namespace morvex {

/// The tray reported by the session bus (StatusNotifierWatcher): both a watcher, which collects the items,
/// and a host, which shows them, must be there. Otherwise the tray `otherwise` decides. Main thread.
class StatusNotifierTray final : public Tray {
  public:
    /// `otherwise` must outlive this object.
    explicit StatusNotifierTray(Tray& otherwise, const QDBusConnection& bus = QDBusConnection::sessionBus());

    [[nodiscard]] bool isThere() const override { return shown_ || otherwise_.isThere(); }

    Connection onArrival(std::function<void()> slot) override { return arrival_.connect(std::move(slot)); }

  private:
    void ask();
    void note(bool shown);

    Tray& otherwise_;
    QDBusConnection bus_;
    bool shown_ = false;
    Signal<> arrival_;
    Connection othersArrival_;
    std::unique_ptr<QDBusPendingCallWatcher> answer_;
    BusSignal came_;
    BusSignal went_;
    QDBusServiceWatcher collector_;
};

} // namespace morvex
