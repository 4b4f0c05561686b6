#include "platform/linux/DesktopNotifications.h"

#include "tests/platform/linux/MockedSystem.h"

#include <QDBusArgument>

#include <string>
#include <vector>

namespace morvex {
namespace {

const QString service = QStringLiteral("org.freedesktop.Notifications");
const QString mock = QStringLiteral("org.freedesktop.DBus.Mock");

class DesktopNotificationsTest : public MockedSystem {
  protected:
    DesktopNotificationsTest()
        : MockedSystem("notification_daemon", service, QStringLiteral("/org/freedesktop/Notifications")) {}

    /// The arguments of every call of this method so far.
    std::vector<QVariantList> calls(const QString& method) const {
        auto reply = call(mock, QStringLiteral("GetMethodCalls"), {method});
        const auto list = reply.arguments().value(0).value<QDBusArgument>();
        std::vector<QVariantList> all;
        for (list.beginArray(); !list.atEnd();) {
            quint64 time = 0;
            QVariantList arguments;
            list.beginStructure();
            list >> time >> arguments;
            list.endStructure();
            all.push_back(arguments);
        }
        list.endArray();
        return all;
    }

    bool eventuallyCalled(const QString& method, std::size_t times) const {
        return eventually([&] { return calls(method).size() == times; });
    }

    void invoke(uint id, const QString& action) const {
        emitSignal(service, QStringLiteral("ActionInvoked"), QStringLiteral("us"), {id, action});
    }

    /// Shows a notice whose pressed buttons land in `pressed`, and waits until the server's number is known.
    void show(DesktopNotifications& notifications, const std::string& title) {
        auto before = calls(QStringLiteral("Notify")).size();
        notifications.show({.title = title,
                            .body = "a < b",
                            .actions = {{"yes", "Ano"}, {"no", "Ne"}},
                            .onAction = [this](const std::string& key) { pressed.push_back(key); }});
        ASSERT_TRUE(eventuallyCalled(QStringLiteral("Notify"), before + 1));
        QCoreApplication::processEvents();
    }

    std::vector<std::string> pressed;
};

TEST_F(DesktopNotificationsTest, ShowsTitleBodyAndButtons) {
    startService();
    DesktopNotifications notifications(systemBus());
    show(notifications, "Nadpis");
    auto sent = calls(QStringLiteral("Notify")).front();
    EXPECT_EQ(sent[0].toString(), QStringLiteral("Morvex"));
    EXPECT_EQ(sent[3].toString(), QStringLiteral("Nadpis"));
    EXPECT_EQ(sent[4].toString(), QStringLiteral("a &lt; b")) << "a server may read markup";
    EXPECT_EQ(qdbus_cast<QStringList>(sent[5]), QStringList({QStringLiteral("yes"), QStringLiteral("Ano"),
                                                             QStringLiteral("no"), QStringLiteral("Ne")}));
}

TEST_F(DesktopNotificationsTest, APressedButtonComesOnceAndOnlyFromItsOwnNotice) {
    startService();
    DesktopNotifications notifications(systemBus());
    show(notifications, "Nadpis");
    invoke(77, QStringLiteral("no"));
    invoke(1, QStringLiteral("yes"));
    invoke(1, QStringLiteral("no"));
    EXPECT_TRUE(eventually([this] { return !pressed.empty(); }));
    call(mock, QStringLiteral("GetCalls"), {});
    QCoreApplication::processEvents();
    EXPECT_EQ(pressed, std::vector<std::string>{"yes"});
}

TEST_F(DesktopNotificationsTest, AWithdrawnNoticeIsClosedAndItsButtonsAreDead) {
    startService();
    DesktopNotifications notifications(systemBus());
    show(notifications, "Nadpis");
    notifications.withdraw();
    EXPECT_TRUE(eventuallyCalled(QStringLiteral("CloseNotification"), 1));
    invoke(1, QStringLiteral("yes"));
    call(mock, QStringLiteral("GetCalls"), {});
    QCoreApplication::processEvents();
    EXPECT_TRUE(pressed.empty());
}

TEST_F(DesktopNotificationsTest, ANoticeThatIsWithdrawnBeforeTheServerAnsweredIsClosedAfterwards) {
    startService();
    DesktopNotifications notifications(systemBus());
    notifications.show({.title = "Nadpis", .body = {}, .actions = {}, .onAction = {}});
    notifications.withdraw();
    EXPECT_TRUE(eventuallyCalled(QStringLiteral("CloseNotification"), 1));
}

TEST_F(DesktopNotificationsTest, WithoutABusOrAServerNothingHappens) {
    for (const auto& bus : {noBus(), systemBus()}) {
        DesktopNotifications notifications(bus);
        notifications.show({.title = "Nadpis", .body = {}, .actions = {}, .onAction = {}});
        QCoreApplication::processEvents();
        notifications.withdraw();
    }
}

} // namespace
} // namespace morvex
