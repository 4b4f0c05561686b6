#include "platform/linux/UPowerMonitor.h"

#include "platform/memory/FakePower.h"
#include "tests/platform/linux/MockedSystem.h"
#include "tests/support/BusService.h"

namespace morvex {
namespace {

const QString upower = QStringLiteral("org.freedesktop.UPower");
const QString onBattery = QStringLiteral("OnBattery");

class UPowerMonitorTest : public MockedSystem {
  protected:
    UPowerMonitorTest() : MockedSystem("upower", upower, QStringLiteral("/org/freedesktop/UPower")) {}

    void setOnBattery(const QVariant& value) const {
        call(QStringLiteral("org.freedesktop.DBus.Mock"), QStringLiteral("UpdateProperties"),
             {upower, QVariantMap{{onBattery, value}}});
    }

    static bool eventuallyOnMains(const UPowerMonitor& monitor, bool expected) {
        return eventually([&] { return monitor.onMains() == expected; });
    }

    FakePower otherwise_;
};

TEST_F(UPowerMonitorTest, FollowsTheService) {
    startService();
    otherwise_.mains = false;
    UPowerMonitor monitor(otherwise_, systemBus());
    EXPECT_TRUE(eventuallyOnMains(monitor, true)) << "its first answer";
    for (bool battery : {true, false, true}) {
        setOnBattery(battery);
        EXPECT_TRUE(eventuallyOnMains(monitor, !battery));
    }
}

TEST_F(UPowerMonitorTest, AnotherMonitorAnswersUntilTheServiceHasAndAfterItsEnd) {
    otherwise_.mains = false;
    UPowerMonitor monitor(otherwise_, systemBus());
    EXPECT_FALSE(monitor.onMains());
    startService();
    EXPECT_TRUE(eventuallyOnMains(monitor, true));
    endService();
    EXPECT_TRUE(eventuallyOnMains(monitor, false));
    startService();
    EXPECT_TRUE(eventuallyOnMains(monitor, true));
}

TEST_F(UPowerMonitorTest, ChangesOfOtherPropertiesAndOddValuesAreIgnored) {
    startService();
    UPowerMonitor monitor(otherwise_, systemBus());
    setOnBattery(true);
    ASSERT_TRUE(eventuallyOnMains(monitor, false));
    const auto properties = QStringLiteral("org.freedesktop.DBus.Properties");
    const auto changed = QStringLiteral("PropertiesChanged");
    const auto signature = QStringLiteral("sa{sv}as");
    auto change = [&](const QString& interface, const QString& name, const QVariant& value) {
        emitSignal(properties, changed, signature, {interface, QVariantMap{{name, value}}, QStringList()});
    };
    change(QStringLiteral("org.freedesktop.UPower.Device"), onBattery, false);
    change(upower, QStringLiteral("LidIsClosed"), false);
    change(upower, onBattery, QStringLiteral("false"));
    emitSignal(properties, changed, QStringLiteral("s"), {upower});
    // A question of our own comes back behind all that was sent before it.
    call(properties, QStringLiteral("GetAll"), {upower});
    QCoreApplication::processEvents();
    EXPECT_FALSE(monitor.onMains());
}

TEST_F(UPowerMonitorTest, AChangeThatOvertakesTheFirstAnswerCounts) {
    BusService* service = nullptr;
    BusService upowerd(busAddress(), "org.freedesktop.UPower", [&service](GDBusMessage* call) {
        g_dbus_connection_emit_signal(
            service->connection(), nullptr, "/org/freedesktop/UPower", "org.freedesktop.DBus.Properties",
            "PropertiesChanged",
            g_variant_new_parsed("('org.freedesktop.UPower', {'OnBattery': <true>}, @as [])"), nullptr);
        auto* reply = g_dbus_message_new_method_reply(call);
        g_dbus_message_set_body(reply, g_variant_new("(v)", g_variant_new_boolean(FALSE)));
        return reply;
    });
    service = &upowerd;
    UPowerMonitor monitor(otherwise_, systemBus());
    ASSERT_TRUE(eventuallyOnMains(monitor, false));
    // The answer of another question comes behind the first one.
    upowerd.waitForCall();
    call(QStringLiteral("org.freedesktop.DBus.Properties"), QStringLiteral("Get"), {upower, onBattery});
    QCoreApplication::processEvents();
    EXPECT_FALSE(monitor.onMains());
}

TEST_F(UPowerMonitorTest, WithoutABusAnotherMonitorAnswers) {
    UPowerMonitor monitor(otherwise_, noBus());
    EXPECT_TRUE(monitor.onMains());
    otherwise_.mains = false;
    EXPECT_FALSE(monitor.onMains());
}

} // namespace
} // namespace morvex
