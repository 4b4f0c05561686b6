#pragma once

#include "tests/platform/linux/MainLoopTest.h"
#include "tests/support/PrivateBus.h"

#include <QDBusConnection>
#include <QDBusMessage>

#include <memory>
#include <string>

namespace morvex {

/// A bus of the test's own, the system's and the session's at once, with one service of python3-dbusmock on
/// it.
class MockedSystem : public MainLoopTest {
  protected:
    MockedSystem(const char* mockTemplate, QString service, QString path)
        : template_(mockTemplate), service_(std::move(service)), path_(std::move(path)) {}

    ~MockedSystem() override { QDBusConnection::disconnectFromBus(connectionName); }

    void startService() {
        program_ = std::make_unique<ChildProgram>(
            std::vector<std::string>{"/usr/bin/python3", "-m", "dbusmock", "--template", template_},
            ChildProgram::Environment{{"DBUS_SYSTEM_BUS_ADDRESS", bus_.address()},
                                      {"DBUS_SESSION_BUS_ADDRESS", bus_.address()}});
        ASSERT_TRUE(eventually([this] { return isThere(); })) << "python3-dbusmock does not start";
    }

    void endService() {
        program_->end();
        ASSERT_TRUE(eventually([this] { return !isThere(); }));
    }

    QDBusMessage call(const QString& interface, const QString& method, const QVariantList& arguments) const {
        auto message = QDBusMessage::createMethodCall(service_, path_, interface, method);
        message.setArguments(arguments);
        auto reply = connection_.call(message);
        EXPECT_EQ(reply.type(), QDBusMessage::ReplyMessage) << reply.errorMessage().toStdString();
        return reply;
    }

    /// Has the service send a signal and waits for the mock, not for the arrival.
    void emitSignal(const QString& interface, const QString& name, const QString& signature,
                    const QVariantList& arguments) const {
        call(QStringLiteral("org.freedesktop.DBus.Mock"), QStringLiteral("EmitSignal"),
             {interface, name, signature, QVariant::fromValue(arguments)});
    }

    [[nodiscard]] const std::string& busAddress() const { return bus_.address(); }

    /// For the adapters.
    [[nodiscard]] const QDBusConnection& systemBus() const { return connection_; }

    static QDBusConnection noBus() { return QDBusConnection(QStringLiteral("nowhere")); }

  private:
    bool isThere() const {
        auto message = QDBusMessage::createMethodCall(
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("/org/freedesktop/DBus"),
            QStringLiteral("org.freedesktop.DBus"), QStringLiteral("NameHasOwner"));
        message << service_;
        return connection_.call(message).arguments().value(0).toBool();
    }

    inline static const QString connectionName = QStringLiteral("mocked");

    std::string template_;
    QString service_;
    QString path_;
    PrivateBus bus_;
    QDBusConnection connection_ =
        QDBusConnection::connectToBus(QString::fromStdString(bus_.address()), connectionName);
    std::unique_ptr<ChildProgram> program_;
};

} // namespace morvex
