#include "tests/e2e/OnDesktop.h"
#include "tests/e2e/TrayHost.h"

#include <chrono>
#include <csignal>
#include <optional>

namespace morvex {
namespace {

/// The whole program with its item in a desktop's tray.
class TrayTest : public OnDesktop {
  protected:
    /// Pairs the companion with a phone; it does not run afterwards.
    void pairInTheConsole() {
        Program mac("morvex", {"--console"}, environment("mac"));
        mac.waitForLine("běží");
        mac.type("relay " + relayAddress);
        pair(mac);
        mac.type("konec");
        EXPECT_EQ(mac.wait(), 0) << mac.output();
    }

    std::unique_ptr<Program> connectPhone() {
        auto program = std::make_unique<Program>(
            "morvex-phone",
            std::vector<std::string>{"--data", (temporary.path() / "phone").string(), "shell"},
            environment("phone"));
        program->type("status");
        return program;
    }

    void expectItem() {
        ASSERT_TRUE(eventually([&] { return tray->items() == 1; })) << "no item in the tray";
    }

    void expectToolTip(const std::string& text) {
        EXPECT_TRUE(eventually([&] { return tray->toolTip() == "Morvex – " + text; })) << tray->toolTip();
    }

    /// Presses the item with one of the mouse buttons. The program measures double clicks by the clock of the
    /// system, so a press soon after another one, or after a window has closed, comes when a person's would.
    void press(void (TrayHost::*button)() = &TrayHost::press) {
        constexpr std::chrono::milliseconds doubleClick{600};
        ASSERT_TRUE(eventually([&] { return std::chrono::steady_clock::now() - acted >= doubleClick; }));
        ((*tray).*button)();
        acted = std::chrono::steady_clock::now();
    }

    /// Presses a button that closes the small window.
    void leaveBy(const std::string& name) {
        ASSERT_NO_FATAL_FAILURE(pressButton(name));
        acted = std::chrono::steady_clock::now();
    }

    bool nothingIsOpen() { return display.topWindow() == 0; }

    std::optional<TrayHost> tray;
    std::chrono::steady_clock::time_point acted; ///< when the small window was opened or closed last
};

TEST_F(TrayTest, PictureAndToolTipFollowTheLink) {
    pairInTheConsole();
    tray.emplace(bus.address());
    auto mac = start();
    ASSERT_NO_FATAL_FAILURE(expectItem());
    expectToolTip("Telefon není připojený");
    const auto away = tray->picture();
    auto device = connectPhone();
    expectToolTip("Připraven");
    const auto ready = tray->picture();
    device.reset();
    expectToolTip("Telefon není připojený");
    EXPECT_EQ(tray->picture(), away);
    relay->signal(SIGKILL);
    EXPECT_TRUE(eventually([&] { return tray->picture() != away; }));
    EXPECT_NE(tray->picture(), ready);
    EXPECT_NE(ready, away);
    EXPECT_TRUE(nothingIsOpen()) << "a companion with a phone stays in the tray";
}

TEST_F(TrayTest, APressOpensTheSmallWindowAndAnotherOneClosesIt) {
    pairInTheConsole();
    tray.emplace(bus.address());
    auto mac = start();
    ASSERT_NO_FATAL_FAILURE(expectItem());
    for (auto button : {&TrayHost::press, &TrayHost::askForMenu}) {
        press(button);
        ASSERT_NO_FATAL_FAILURE(see("Otevřít nastavení"));
        EXPECT_FALSE(reader.shows("Spárovat jiný telefon")) << "that is the main window";
        press(button);
        EXPECT_TRUE(eventually([&] { return nothingIsOpen(); })) << screen();
    }
    press();
    ASSERT_NO_FATAL_FAILURE(leaveBy("Otevřít nastavení"));
    ASSERT_NO_FATAL_FAILURE(see("Spárovat jiný telefon"));
    press();
    ASSERT_NO_FATAL_FAILURE(pressButton("Ukončit Morvex"));
    EXPECT_EQ(mac->wait(), 0) << mac->output();
}

TEST_F(TrayTest, ADoubleClickLeavesTheSmallWindowOpen) {
    pairInTheConsole();
    tray.emplace(bus.address());
    auto mac = start();
    ASSERT_NO_FATAL_FAILURE(expectItem());
    tray->press();
    tray->press();
    // Answered after both presses.
    expectToolTip("Telefon není připojený");
    ASSERT_NO_FATAL_FAILURE(see("Otevřít nastavení"));
    EXPECT_FALSE(nothingIsOpen());
    acted = std::chrono::steady_clock::now();
    press();
    EXPECT_TRUE(eventually([&] { return nothingIsOpen(); })) << screen();
}

TEST_F(TrayTest, WithoutAPhoneTheWindowOpensBesideTheItem) {
    tray.emplace(bus.address());
    auto mac = startWindow();
    ASSERT_NO_FATAL_FAILURE(expectItem());
    expectToolTip("Nespárováno");
}

TEST_F(TrayTest, WithAPhoneAndWithoutATrayTheWindowOpens) {
    pairInTheConsole();
    auto mac = start();
    ASSERT_NO_FATAL_FAILURE(see("Spárovat jiný telefon"));
}

TEST_F(TrayTest, ATrayThatComesWhenTheProgramServesItsPhoneAlreadyGetsTheItem) {
    pairInTheConsole();
    auto mac = start();
    auto device = connectPhone();
    device->type("tools");
    device->waitForLine("mac.status");
    tray.emplace(bus.address());
    ASSERT_NO_FATAL_FAILURE(expectItem());
    press();
    ASSERT_NO_FATAL_FAILURE(see("Otevřít nastavení"));
}

TEST_F(TrayTest, ATrayThatComesAfterTheWindowHasOpenedGetsTheItemAndGetsItAgainWhenItComesBack) {
    auto mac = startWindow();
    for (int time = 0; time < 2; ++time) {
        tray.reset();
        tray.emplace(bus.address());
        ASSERT_NO_FATAL_FAILURE(expectItem());
        expectToolTip("Nespárováno");
    }
}

TEST_F(TrayTest, ATrayOfTheDisplayItselfGetsTheItemEarlyOrLate) {
    pairInTheConsole();
    for (bool early : {true, false}) {
        VirtualDisplay other;
        shared["DISPLAY"] = other.name();
        if (early) other.startTray();
        auto mac = start();
        if (!early) {
            EXPECT_TRUE(eventually([&] { return other.topWindow() != 0; })) << "the window without a tray";
            other.startTray();
        }
        EXPECT_TRUE(eventually([&] { return other.itemInTray() != 0; })) << early;
    }
}

TEST_F(TrayTest, ASecondStartBringsTheWindowOfOneInTheTrayToTheFront) {
    pairInTheConsole();
    tray.emplace(bus.address());
    auto mac = start();
    ASSERT_NO_FATAL_FAILURE(expectItem());
    const auto other = display.coverScreen();
    ASSERT_EQ(display.topWindow(), other);
    startAgain();
    ASSERT_NO_FATAL_FAILURE(see("Spárovat jiný telefon"));
    EXPECT_NE(display.topWindow(), other);
}

} // namespace
} // namespace morvex
