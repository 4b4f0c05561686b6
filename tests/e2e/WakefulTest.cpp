#include "tests/platform/linux/MockedLogind.h"
#include "tests/support/Household.h"

#include <filesystem>

namespace morvex {
namespace {

/// The whole program among a mocked login service.
class WakefulTest : public MockedLogind, protected Household {
  protected:
    WakefulTest() {
        startService();
        shared["DBUS_SYSTEM_BUS_ADDRESS"] = busAddress();
    }

    /// Whether a lock of this kind is held.
    bool holds(const std::string& kind) const {
        auto all = locks();
        return std::ranges::any_of(all, [&](const auto& lock) { return lock.starts_with(kind); });
    }

    const QString prepareForSleep = QStringLiteral("PrepareForSleep");
};

TEST_F(WakefulTest, ForASleepTheLinkIsClosedBeforeTheLockIsLetGoAndItComesBackWithTheWaking) {
    auto mac = startMac();
    pair(*mac);
    EXPECT_EQ(phone({"status"}).code, 0);
    ASSERT_TRUE(eventually([this] { return holds("sleep by Morvex, delay"); }));

    sendPrepare(prepareForSleep, true);
    mac->waitForNextLine(" spí (");
    EXPECT_TRUE(eventually([this] { return !holds("sleep"); }));
    EXPECT_EQ(phone({"--timeout", "2", "status"}).code, 4);

    sendPrepare(prepareForSleep, false);
    EXPECT_EQ(phone({"status"}).code, 0) << mac->output();
    EXPECT_TRUE(eventually([this] { return holds("sleep by Morvex, delay"); }));
}

TEST_F(WakefulTest, TheSwitchesReachTheSystem) {
    auto mac = startMac();
    mac->type("vzhuru zap");
    EXPECT_TRUE(eventually([this] { return holds("idle by Morvex, block"); })) << mac->output();
    mac->type("vzhuru vyp");
    EXPECT_TRUE(eventually([this] { return !holds("idle"); }));

    auto entry = temporary.path() / "mac/.config/autostart/morvex.desktop";
    mac->type("po-prihlaseni zap");
    EXPECT_TRUE(eventually([&] { return std::filesystem::exists(entry); })) << mac->output();
    mac->type("po-prihlaseni vyp");
    EXPECT_TRUE(eventually([&] { return !std::filesystem::exists(entry); })) << mac->output();
}

} // namespace
} // namespace morvex
