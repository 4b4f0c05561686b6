#include "platform/linux/DesktopNotifications.h"

#include <QDBusPendingCallWatcher>
#include <QDBusPendingReply>
#include <QStringList>
#include <QVariantMap>

#include <utility>

namespace morvex {

namespace {

constexpr QLatin1StringView service{"org.freedesktop.Notifications"};
constexpr QLatin1StringView path{"/org/freedesktop/Notifications"};
constexpr uchar urgent = 2;
constexpr int serversChoice = -1;

QDBusMessage call(const QString& method) {
    return QDBusMessage::createMethodCall(service, path, service, method);
}

QString text(const std::string& words) {
    return QString::fromStdString(words);
}

QDBusMessage notifyCall(const Notifications::Notice& notice, uint replaces) {
    QStringList actions;
    for (const auto& action : notice.actions) actions << text(action.key) << text(action.label);
    const QVariantMap hints{{QStringLiteral("urgency"), QVariant::fromValue(urgent)},
                            {QStringLiteral("desktop-entry"), QStringLiteral("morvex")}};
    auto message = call(QStringLiteral("Notify"));
    // The server may interpret the body as markup.
    message << QStringLiteral("Morvex") << replaces << QStringLiteral("morvex") << text(notice.title)
            << text(notice.body).toHtmlEscaped() << actions << hints << serversChoice;
    return message;
}

} // namespace

DesktopNotifications::DesktopNotifications(const QDBusConnection& bus)
    : bus_(bus),
      actionInvoked_(bus, {service, path, service, QStringLiteral("ActionInvoked")},
                     [this](const QDBusMessage& signal) { actionInvoked(signal); }),
      closed_(bus, {service, path, service, QStringLiteral("NotificationClosed")},
              [this](const QDBusMessage& signal) { closed(signal); }) {}

void DesktopNotifications::show(Notice notice) {
    notice_ = std::move(notice);
    auto* answer = new QDBusPendingCallWatcher(bus_.asyncCall(notifyCall(*notice_, id_)), &answers_);
    id_ = 0;
    QObject::connect(answer, &QDBusPendingCallWatcher::finished, answer,
                     [this, answer, generation = ++generation_] {
                         QDBusPendingReply<uint> reply = *answer;
                         if (!reply.isError()) shown(generation, reply.value());
                         answer->deleteLater();
                     });
}

void DesktopNotifications::shown(std::uint64_t generation, std::uint32_t id) {
    if (generation == generation_ && notice_)
        id_ = id;
    else
        closeOnServer(id);
}

void DesktopNotifications::withdraw() {
    notice_.reset();
    if (id_ != 0) closeOnServer(std::exchange(id_, 0));
}

void DesktopNotifications::closeOnServer(std::uint32_t id) const {
    auto message = call(QStringLiteral("CloseNotification"));
    message << id;
    (void)bus_.send(message);
}

void DesktopNotifications::actionInvoked(const QDBusMessage& signal) {
    if (signal.signature() != QStringLiteral("us") || !notice_) return;
    auto arguments = signal.arguments();
    if (id_ == 0 || arguments[0].toUInt() != id_) return;
    auto notice = std::exchange(notice_, std::nullopt);
    if (notice->onAction) notice->onAction(arguments[1].toString().toStdString());
}

void DesktopNotifications::closed(const QDBusMessage& signal) {
    if (signal.signature() != QStringLiteral("uu") || signal.arguments()[0].toUInt() != id_) return;
    id_ = 0;
    notice_.reset();
}

} // namespace morvex
