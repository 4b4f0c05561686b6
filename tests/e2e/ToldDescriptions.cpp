#include "tests/e2e/ToldDescriptions.h"

#include "shared/base/Require.h"

#include <QCoreApplication>
#include <QDBusVariant>

#include <algorithm>
#include <utility>

namespace morvex {

ToldDescriptions::ToldDescriptions(QDBusConnection bus) : bus_(std::move(bus)) {
    auto wish = QDBusMessage::createMethodCall(
        QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("/org/a11y/atspi/registry"),
        QStringLiteral("org.a11y.atspi.Registry"), QStringLiteral("RegisterEvent"));
    wish.setArguments({QStringLiteral("Object:PropertyChange")});
    require(bus_.call(wish).type() == QDBusMessage::ReplyMessage, "the registry takes no wishes");
    require(bus_.connect({}, {}, QStringLiteral("org.a11y.atspi.Event.Object"),
                         QStringLiteral("PropertyChange"), this, SLOT(note(QDBusMessage))),
            "nothing is heard of the bus");
}

bool ToldDescriptions::hasHeard(const std::string& description) {
    QCoreApplication::processEvents();
    return std::ranges::find(heard_, description) != heard_.end();
}

void ToldDescriptions::note(const QDBusMessage& event) {
    if (event.arguments().value(0).toString() != QStringLiteral("accessible-description")) return;
    // The event only says that the description has changed, not its new value.
    auto question = QDBusMessage::createMethodCall(event.service(), event.path(),
                                                   QStringLiteral("org.freedesktop.DBus.Properties"),
                                                   QStringLiteral("Get"));
    question.setArguments({QStringLiteral("org.a11y.atspi.Accessible"), QStringLiteral("Description")});
    const auto answer = bus_.call(question).arguments().value(0).value<QDBusVariant>();
    heard_.push_back(answer.variant().toString().toStdString());
}

} // namespace morvex
