#include "platform/linux/StatusNotifierTray.h"

#include <QDBusPendingReply>
#include <QDBusVariant>

#include <utility>

namespace morvex {

namespace {

constexpr QLatin1StringView service{"org.kde.StatusNotifierWatcher"};
constexpr QLatin1StringView path{"/StatusNotifierWatcher"};

} // namespace

StatusNotifierTray::StatusNotifierTray(Tray& otherwise, const QDBusConnection& bus)
    : otherwise_(otherwise),
      bus_(bus),
      othersArrival_(otherwise.onArrival([this] { arrival_.tell(); })),
      came_(bus, {service, path, service, QStringLiteral("StatusNotifierHostRegistered")},
            [this](const QDBusMessage&) { note(true); }),
      went_(bus, {service, path, service, QStringLiteral("StatusNotifierHostUnregistered")},
            [this](const QDBusMessage&) { ask(); }),
      collector_(service, bus) {
    QObject::connect(&collector_, &QDBusServiceWatcher::serviceUnregistered, &collector_,
                     [this] { note(false); });
    QObject::connect(&collector_, &QDBusServiceWatcher::serviceRegistered, &collector_, [this] { ask(); });
    ask();
}

void StatusNotifierTray::ask() {
    auto call = QDBusMessage::createMethodCall(
        service, path, QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"));
    call << QString(service) << QStringLiteral("IsStatusNotifierHostRegistered");
    // The query must not start a watcher that nothing else needs.
    call.setAutoStartService(false);
    answer_ = std::make_unique<QDBusPendingCallWatcher>(bus_.asyncCall(call));
    QObject::connect(answer_.get(), &QDBusPendingCallWatcher::finished, answer_.get(), [this] {
        QDBusPendingReply<QDBusVariant> reply = *answer_;
        note(!reply.isError() && reply.value().variant().toBool());
    });
}

void StatusNotifierTray::note(bool shown) {
    answer_.reset();
    if (!std::exchange(shown_, shown) && shown) arrival_.tell();
}

} // namespace morvex
