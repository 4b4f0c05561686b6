#include "platform/linux/UPowerMonitor.h"

#include <QDBusArgument>
#include <QDBusPendingReply>
#include <QDBusVariant>

namespace morvex {

namespace {

constexpr QLatin1StringView service{"org.freedesktop.UPower"};
constexpr QLatin1StringView path{"/org/freedesktop/UPower"};
constexpr QLatin1StringView properties{"org.freedesktop.DBus.Properties"};
constexpr QLatin1StringView onBatteryName{"OnBattery"};

} // namespace

UPowerMonitor::UPowerMonitor(const PowerMonitor& otherwise, const QDBusConnection& bus)
    : otherwise_(otherwise),
      bus_(bus),
      changed_(bus, {service, path, properties, QStringLiteral("PropertiesChanged")},
               [this](const QDBusMessage& signal) { propertiesChanged(signal); }),
      service_(service, bus) {
    QObject::connect(&service_, &QDBusServiceWatcher::serviceUnregistered, &service_, [this] {
        answer_.reset();
        onBattery_.reset();
    });
    QObject::connect(&service_, &QDBusServiceWatcher::serviceRegistered, &service_, [this] { ask(); });
    ask();
}

bool UPowerMonitor::onMains() const {
    return onBattery_ ? !*onBattery_ : otherwise_.onMains();
}

void UPowerMonitor::ask() {
    auto call = QDBusMessage::createMethodCall(service, path, properties, QStringLiteral("Get"));
    call << QString(service) << QString(onBatteryName);
    answer_ = std::make_unique<QDBusPendingCallWatcher>(bus_.asyncCall(call));
    QObject::connect(answer_.get(), &QDBusPendingCallWatcher::finished, answer_.get(), [this] {
        QDBusPendingReply<QDBusVariant> reply = *answer_;
        if (!reply.isError()) note(reply.value().variant());
    });
}

void UPowerMonitor::note(const QVariant& onBattery) {
    if (onBattery.typeId() == QMetaType::Bool) onBattery_ = onBattery.toBool();
}

void UPowerMonitor::propertiesChanged(const QDBusMessage& signal) {
    if (signal.signature() != QStringLiteral("sa{sv}as")) return;
    auto arguments = signal.arguments();
    if (arguments[0].toString() != service) return;
    auto values = qdbus_cast<QVariantMap>(arguments[1]);
    auto value = values.find(onBatteryName);
    if (value == values.end()) return;
    // Drops the pending answer, since Qt may deliver it after a signal that was sent later. If the answer is
    // newer, the signal for that change still follows.
    answer_.reset();
    note(*value);
}

} // namespace morvex
