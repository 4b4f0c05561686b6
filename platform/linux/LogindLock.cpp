#include "platform/linux/LogindLock.h"

#include "foundation/ProgramLog.h"
#include "platform/linux/Logind.h"
#include "shared/base/SystemTrouble.h"

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

SystemTrouble troubleOf(const QDBusError& error) {
    switch (error.type()) {
    case QDBusError::AccessDenied:
        return SystemTrouble::notAllowed;
    case QDBusError::ServiceUnknown:
    case QDBusError::Disconnected:
    case QDBusError::NoServer:
    case QDBusError::UnknownObject:
        return SystemTrouble::serviceMissing;
    case QDBusError::NoReply:
    case QDBusError::Timeout:
    case QDBusError::TimedOut:
        return SystemTrouble::serviceSilent;
    default: // not returned by this service
        return SystemTrouble::other;
    }
}

} // namespace

LogindLock::LogindLock(const QDBusConnection& bus, const Request& request,
                       std::function<void(const Error&)> onFailure)
    : answer_(inhibit(bus, request)) {
    auto answered = [this, onFailure = std::move(onFailure)] { take(onFailure); };
    // Without a bus the call ends at once, and its watcher never emits `finished`.
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
        ProgramLog::write("logind: " + reply.error().message().toStdString());
        onFailure(TextError{
            "Přihlašovací služba systému to nezařídila: {duvod}"_sentence(popis(troubleOf(reply.error())))});
    }
}

} // namespace morvex
