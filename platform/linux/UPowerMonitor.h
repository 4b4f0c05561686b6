#pragma once

#include "platform/linux/BusSignal.h"
#include "platform/ports/PowerMonitor.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusServiceWatcher>
#include <QVariant>

#include <memory>
#include <optional>

namespace morvex {

/// The power source reported by UPower and updated by its signals, so that no query waits for the bus. Until
/// UPower's first answer, and while it is not running, another monitor answers. Main thread.
class UPowerMonitor final : public PowerMonitor {
  public:
    /// `otherwise` must outlive this object.
    explicit UPowerMonitor(const PowerMonitor& otherwise,
                           const QDBusConnection& bus = QDBusConnection::systemBus());

    [[nodiscard]] bool onMains() const override;

  private:
    void ask();
    void note(const QVariant& onBattery);
    void propertiesChanged(const QDBusMessage& signal);

    const PowerMonitor& otherwise_;
    QDBusConnection bus_;
    std::optional<bool> onBattery_;
    std::unique_ptr<QDBusPendingCallWatcher> answer_;
    BusSignal changed_;
    QDBusServiceWatcher service_;
};

} // namespace morvex
