#include "platform/linux/LogindLock.h"

#include "platform/linux/Logind.h"

#include <QDBusMessage>
#include <QDBusPendingReply>
#include <QTimer>

#include <utility>

namespace morvex {

namespace {

QDBusPendingCall inhibit(const QDBusConnection& bus, const LogindLock::Request& request) {
    auto call = QDBusMessage::createMethodCall(Logind::service, Logind::path, Logind::interface,
                                               QStringLiteral("Inhibit"));
    call << request.what << QStringLiteral("Morvex") << request.why << request.mode;
    return bus.asyncCall(call);
}

} // namespace

LogindLock::LogindLock(const QDBusConnection& bus, const Request& request,
                       std::function<void(const Error&)> onFailure)
    : answer_(inhibit(bus, request)) {
    auto answered = [this, onFailure = std::move(onFailure)] { take(onFailure); };
    // Without a bus the call ends at once, and its watcher never says so.
    if (bus.isConnected())
        QObject::connect(&answer_, &QDBusPendingCallWatcher::finished, &answer_, std::move(answered));
    else
        QTimer::singleShot(0, &answer_, std::move(answered));
}

void LogindLock::take(const std::function<void(const Error&)>& onFailure) {
    QDBusPendingReply<QDBusUnixFileDescriptor> reply = answer_;
    if (!reply.isError() && reply.value().isValid()) {
        lock_ = reply.value();
    } else if (onFailure) {
        onFailure(TextError{"Přihlašovací služba systému to nezařídila (" +
                            reply.error().message().toStdString() + ")."});
    }
}

} // namespace morvex
