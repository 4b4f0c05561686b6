#include "platform/linux/PortalColorScheme.h"

#include "tests/platform/linux/MockedSystem.h"
#include "tests/support/BusService.h"

namespace morvex {
namespace {

using Preference = ColorScheme::Preference;

/// A settings portal that answers with `answer` and can tell of changes.
class PortalColorSchemeTest : public MockedSystem {
  protected:
    PortalColorSchemeTest() : MockedSystem("", QString(), QString()) {}

    std::unique_ptr<BusService> startPortal(const char* answer) {
        return std::make_unique<BusService>(busAddress(), "org.freedesktop.portal.Desktop",
                                            [answer](GDBusMessage* call) {
                                                auto* reply = g_dbus_message_new_method_reply(call);
                                                g_dbus_message_set_body(reply, g_variant_new_parsed(answer));
                                                return reply;
                                            });
    }

    static void tell(BusService& portal, const char* signal) {
        g_dbus_connection_emit_signal(portal.connection(), nullptr, "/org/freedesktop/portal/desktop",
                                      "org.freedesktop.portal.Settings", "SettingChanged",
                                      g_variant_new_parsed(signal), nullptr);
    }
};

TEST_F(PortalColorSchemeTest, TakesTheFirstAnswerAndEveryChange) {
    auto portal = startPortal("(<<uint32 1>>,)");
    PortalColorScheme scheme(systemBus());
    int changes = 0;
    const auto connection = scheme.onChange([&changes] { ++changes; });
    EXPECT_EQ(scheme.preference(), Preference::none);
    EXPECT_TRUE(eventually([&] { return scheme.preference() == Preference::dark; }));
    EXPECT_EQ(changes, 1);
    tell(*portal, "('org.freedesktop.appearance', 'color-scheme', <uint32 2>)");
    EXPECT_TRUE(eventually([&] { return scheme.preference() == Preference::light; }));
    tell(*portal, "('org.freedesktop.appearance', 'color-scheme', <uint32 0>)");
    EXPECT_TRUE(eventually([&] { return scheme.preference() == Preference::none; }));
}

TEST_F(PortalColorSchemeTest, OtherSettingsAndOddValuesAreIgnored) {
    auto portal = startPortal("(<<'dark'>>,)");
    PortalColorScheme scheme(systemBus());
    portal->waitForCall();
    tell(*portal, "('org.gnome.desktop.interface', 'color-scheme', <uint32 1>)");
    tell(*portal, "('org.freedesktop.appearance', 'accent-color', <uint32 1>)");
    tell(*portal, "('org.freedesktop.appearance', 'color-scheme', <'dark'>)");
    tell(*portal, "('org.freedesktop.appearance', 'color-scheme', <uint32 2>)");
    EXPECT_TRUE(eventually([&] { return scheme.preference() == Preference::light; })) << "after all of them";
}

TEST_F(PortalColorSchemeTest, WithoutABusOrAPortalThereIsNoPreference) {
    for (const auto& bus : {noBus(), systemBus()}) {
        PortalColorScheme scheme(bus);
        QCoreApplication::processEvents();
        EXPECT_EQ(scheme.preference(), Preference::none);
    }
}

} // namespace
} // namespace morvex
