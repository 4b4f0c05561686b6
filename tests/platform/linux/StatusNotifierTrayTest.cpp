#include "platform/linux/StatusNotifierTray.h"

#include "platform/memory/FakeTray.h"
#include "tests/platform/linux/MockedSystem.h"
#include "tests/support/BusService.h"

#include <atomic>

namespace morvex {
namespace {

constexpr const char* service = "org.kde.StatusNotifierWatcher";

/// A collector of items that says whether somebody shows them.
class StatusNotifierTrayTest : public MockedSystem {
  protected:
    StatusNotifierTrayTest() : MockedSystem("", QString(), QString()) {}

    std::unique_ptr<BusService> startCollector() {
        return std::make_unique<BusService>(busAddress(), service, [this](GDBusMessage* call) {
            auto* reply = g_dbus_message_new_method_reply(call);
            g_dbus_message_set_body(reply, g_variant_new("(v)", g_variant_new_boolean(isShown)));
            return reply;
        });
    }

    static void tell(BusService& collector, const char* signal) {
        g_dbus_connection_emit_signal(collector.connection(), nullptr, "/StatusNotifierWatcher", service,
                                      signal, nullptr, nullptr);
    }

    std::atomic_bool isShown = true;
    FakeTray other;
};

TEST_F(StatusNotifierTrayTest, IsThereAsSoonAsTheCollectorSaysThatItemsAreShown) {
    auto collector = startCollector();
    StatusNotifierTray tray(other, systemBus());
    int arrivals = 0;
    const auto connection = tray.onArrival([&arrivals] { ++arrivals; });
    EXPECT_FALSE(tray.isThere());
    EXPECT_TRUE(eventually([&] { return tray.isThere(); }));
    EXPECT_EQ(arrivals, 1);
}

TEST_F(StatusNotifierTrayTest, ComesAfterTheProgramGoesAndComesBack) {
    StatusNotifierTray tray(other, systemBus());
    int arrivals = 0;
    const auto connection = tray.onArrival([&arrivals] { ++arrivals; });
    for (int time = 1; time <= 2; ++time) {
        auto collector = startCollector();
        EXPECT_TRUE(eventually([&] { return tray.isThere(); }));
        EXPECT_EQ(arrivals, time);
        collector.reset();
        EXPECT_TRUE(eventually([&] { return !tray.isThere(); }));
    }
}

TEST_F(StatusNotifierTrayTest, ACollectorWhoseItemsNobodyShowsIsNoTrayYet) {
    isShown = false;
    auto collector = startCollector();
    StatusNotifierTray tray(other, systemBus());
    collector->waitForCall();
    tell(*collector, "StatusNotifierItemRegistered");
    EXPECT_FALSE(tray.isThere());
    tell(*collector, "StatusNotifierHostRegistered");
    EXPECT_TRUE(eventually([&] { return tray.isThere(); }));
    tell(*collector, "StatusNotifierHostUnregistered");
    EXPECT_TRUE(eventually([&] { return !tray.isThere(); }));
}

TEST_F(StatusNotifierTrayTest, WithoutACollectorAnotherKindOfTrayAnswers) {
    for (const auto& bus : {noBus(), systemBus()}) {
        StatusNotifierTray tray(other, bus);
        int arrivals = 0;
        const auto connection = tray.onArrival([&arrivals] { ++arrivals; });
        QCoreApplication::processEvents();
        EXPECT_FALSE(tray.isThere());
        other.come();
        EXPECT_TRUE(tray.isThere());
        EXPECT_EQ(arrivals, 1);
        other.go();
    }
}

} // namespace
} // namespace morvex
