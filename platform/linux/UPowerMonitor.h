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

/// The power source as UPower tells it, kept up to date by its signals, so that no question waits for the
/// bus. Until its first answer, and whenever it is not there, another monitor answers. Main thread.
class UPowerMonitor final : public PowerMonitor {
  public:
    /// `otherwise` outlives this object.
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
