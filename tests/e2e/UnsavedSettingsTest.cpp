#include "tests/e2e/OnDesktop.h"
#include "tests/support/BusService.h"

#include <csignal>
#include <filesystem>
#include <mutex>
#include <string>
#include <vector>

namespace morvex {
namespace {

/// A notification server that only stores the notices.
class NoticeBoard {
  public:
    explicit NoticeBoard(const std::string& bus)
        : service_(bus, "org.freedesktop.Notifications",
                   [this](GDBusMessage* call) { return answer(call); }) {}

    std::vector<std::string> bodies() {
        std::lock_guard lock(mutex_);
        return bodies_;
    }

  private:
    GDBusMessage* answer(GDBusMessage* call) {
        auto* reply = g_dbus_message_new_method_reply(call);
        if (std::string(g_dbus_message_get_member(call)) == "Notify") {
            constexpr gsize bodyPlace = 4;
            GLibHandle<GVariant, g_variant_unref> body(
                g_variant_get_child_value(g_dbus_message_get_body(call), bodyPlace));
            g_dbus_message_set_body(reply, g_variant_new("(u)", 1U));
            std::lock_guard lock(mutex_);
            bodies_.emplace_back(g_variant_get_string(body.get(), nullptr));
        }
        return reply;
    }

    std::mutex mutex_;
    std::vector<std::string> bodies_;
    BusService service_;
};

using UnsavedSettingsTest = OnDesktop;

TEST_F(UnsavedSettingsTest, AreToldOfInANotificationWhenTheWindowEnds) {
    std::filesystem::create_directories(temporary.path() / "mac/.config/Morvex/defaults.json");
    NoticeBoard board(bus.address());
    auto mac = startWindow();
    ASSERT_NO_FATAL_FAILURE(goTo("Soubory"));
    display.press(VirtualDisplay::space);
    mac->waitForLine("saving: Invalid argument");
    EXPECT_TRUE(board.bodies().empty());
    mac->signal(SIGTERM);
    EXPECT_EQ(mac->wait(), 0) << mac->output();
    EXPECT_TRUE(eventually([&] { return !board.bodies().empty(); }));
    EXPECT_EQ(board.bodies(),
              std::vector<std::string>{"Nastavení se nepodařilo uložit: Takovou cestu nejde použít."});
}

TEST(UnsavedSettings, AreToldOfAtTheEnd) {
    Household household;
    const auto file = household.temporary.path() / "mac/.config/Morvex/defaults.json";
    std::filesystem::create_directories(file);
    Program mac("morvex", {}, household.environment("mac"));
    mac.waitForLine("Soubor s nastavením nejde přečíst: ");
    mac.type("stav");
    mac.waitForLine("Telefon: ");
    EXPECT_EQ(mac.output().find("Nastavení se nepodařilo"), std::string::npos) << "nothing was changed yet";
    mac.type("vypnout soubory");
    mac.waitForLine("Potíž: Nastavení se nepodařilo uložit: ");
    mac.type("konec");
    EXPECT_EQ(mac.wait(), 0);
    const auto output = mac.output();
    EXPECT_NE(output.find("\nNastavení se nepodařilo uložit: "), std::string::npos) << output;
}

TEST(UnsavedUnpairing, IsToldOfAtTheEnd) {
    Household household;
    auto mac = household.startMac();
    household.pair(*mac);
    // Makes the vault unreadable and unwritable, whatever the user's rights.
    const auto file = household.peerFile();
    std::filesystem::rename(file, file.string() + ".kept");
    std::filesystem::create_directories(file / "inside");
    mac->type("odpojit");
    mac->waitForLine("Potíž: Odpojení telefonu se nepodařilo uložit: ");
    mac->type("konec");
    EXPECT_EQ(mac->wait(), 0);
    const auto output = mac->output();
    EXPECT_NE(output.find("\nOdpojení telefonu se nepodařilo uložit: "), std::string::npos) << output;
}

} // namespace
} // namespace morvex
