#include "phone/QrPicture.h"
#include "tests/e2e/Household.h"
#include "tests/e2e/ScreenReader.h"
#include "tests/e2e/VirtualDisplay.h"
#include "tests/support/PrivateBus.h"

#include <QCoreApplication>
#include <gtest/gtest.h>

#include <chrono>
#include <csignal>
#include <filesystem>
#include <thread>

namespace morvex {
namespace {

/// The whole program on a desktop: its window drawn on a display without a screen, used with a keyboard and
/// read with eyes and ears.
class WindowPairingTest : public testing::Test, protected Household {
  protected:
    WindowPairingTest() {
        static int argc = 1;
        static char name[] = "test";
        static char* argv[] = {name, nullptr};
        static QCoreApplication application(argc, argv);
        for (const auto& [variable, value] : desktop()) shared[variable] = value;
    }

    ChildProgram::Environment desktop() {
        const auto runtime = temporary.path() / "run";
        std::filesystem::create_directories(runtime);
        std::filesystem::permissions(runtime, std::filesystem::perms::owner_all);
        return {{"DISPLAY", display.name()},
                {"DBUS_SESSION_BUS_ADDRESS", bus.address()},
                {"XDG_RUNTIME_DIR", runtime.string()},
                {"GSETTINGS_BACKEND", "memory"},
                {"QT_QPA_PLATFORM", "xcb"},
                {"QT_LINUX_ACCESSIBILITY_ALWAYS_ON", "1"},
                {"LC_ALL", "C.UTF-8"}};
    }

    /// Waits until the condition holds; false when it does not within a time that no working system needs.
    template <class Condition> static bool eventually(Condition condition) {
        const auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > giveUp) return false;
            std::this_thread::sleep_for(std::chrono::milliseconds(10));
        }
        return true;
    }

    /// Waits for this text in the window.
    void see(const std::string& text) {
        ASSERT_TRUE(eventually([&] { return reader.shows(text); })) << text << " is not in\n" << screen();
    }

    /// Tab after Tab until the keyboard is at the item of this name.
    void goTo(const std::string& name) {
        constexpr int mostItems = 60;
        auto at = reader.withKeyboard();
        for (int presses = 0; presses < mostItems && !(at && at->name == name); ++presses) {
            display.press(VirtualDisplay::tab);
            auto before = at ? at->path : QString();
            ASSERT_TRUE(eventually([&] {
                at = reader.withKeyboard();
                return at && at->path != before;
            })) << "the keyboard stays where it is\n"
                << screen();
        }
        ASSERT_TRUE(at && at->name == name) << name << " is not to be reached\n" << screen();
    }

    void pressButton(const std::string& name) {
        see(name);
        goTo(name);
        display.press(VirtualDisplay::space);
    }

    void typeRelayAddress() {
        see("Relay");
        goTo("Relay");
        display.press('a', VirtualDisplay::control);
        display.type(relayAddress);
    }

    /// A picture of the screen on which the phone finds the code.
    std::string photograph() {
        auto picture = (temporary.path() / "screen.png").string();
        EXPECT_TRUE(eventually([&] {
            display.takePicture(picture);
            return readQrPicture(picture).has_value();
        })) << screen();
        return picture;
    }

    std::string screen() const {
        std::string all;
        for (const auto& item : reader.read())
            all += "  " + item.name + (item.hasKeyboard ? "   <- keyboard\n" : "\n");
        return all;
    }

    std::unique_ptr<Program> startWindow() {
        auto mac = std::make_unique<Program>("morvex", std::vector<std::string>{}, environment("mac"));
        see("Zobrazit QR kód");
        return mac;
    }

    void startAgain() {
        auto second = runProgram("morvex", {}, environment("mac"));
        EXPECT_EQ(second.code, 0) << second.output;
    }

    VirtualDisplay display;
    PrivateBus bus;
    ScreenReader reader{desktop()};
};

TEST_F(WindowPairingTest, APersonWithAKeyboardPairsAPhoneThatPhotographsTheScreen) {
    auto mac = startWindow();
    ASSERT_NO_FATAL_FAILURE(typeRelayAddress());
    ASSERT_NO_FATAL_FAILURE(pressButton("Zobrazit QR kód"));
    ASSERT_NO_FATAL_FAILURE(see("Načti tento kód v aplikaci Morvex na telefonu."));

    Program phone("morvex-phone", {"--data", (temporary.path() / "phone").string(), "pair", photograph()},
                  environment("phone"));
    auto line = phone.waitForLine("Číslo pro porovnání s Macem: ");
    auto number = line.substr(line.find(": ") + 2);
    ASSERT_NO_FATAL_FAILURE(see(number));
    ASSERT_NO_FATAL_FAILURE(pressButton("Souhlasí"));
    phone.type("a");
    EXPECT_EQ(phone.wait(), 0) << phone.output();
    ASSERT_NO_FATAL_FAILURE(see("Odpojit telefon"));

    auto status = this->phone({"status"});
    EXPECT_EQ(status.code, 0) << status.output << screen();
    mac->signal(SIGTERM);
    EXPECT_EQ(mac->wait(), 0) << mac->output();
}

TEST_F(WindowPairingTest, ANumberThatDiffersIsRefusedInTheWindow) {
    auto mac = startWindow();
    ASSERT_NO_FATAL_FAILURE(typeRelayAddress());
    ASSERT_NO_FATAL_FAILURE(pressButton("Zobrazit QR kód"));
    Program phone("morvex-phone", {"--data", (temporary.path() / "phone").string(), "pair", photograph()},
                  environment("phone"));
    ASSERT_NO_FATAL_FAILURE(pressButton("Neshoduje se"));
    ASSERT_NO_FATAL_FAILURE(
        see("Čísla se neshodovala. Párování jsem zrušil a nic neuložil. Zkus to znovu; pokud se to bude "
            "opakovat, někdo poslouchá."));
    EXPECT_FALSE(std::filesystem::exists(
        temporary.path() / "mac/.local/share/Morvex/vault/zz.bramwicks.tolvy/parovani.protejsek"));
}

TEST_F(WindowPairingTest, AKeyPressedTwiceDoesNotReachTheButtonThatHasGone) {
    auto mac = startWindow();
    ASSERT_NO_FATAL_FAILURE(typeRelayAddress());
    ASSERT_NO_FATAL_FAILURE(pressButton("Zobrazit QR kód"));
    const auto shown = readQrPicture(photograph());
    display.press(VirtualDisplay::space);
    ASSERT_NO_FATAL_FAILURE(goTo("Zrušit"));
    EXPECT_EQ(readQrPicture(photograph()).value(), shown.value());
}

TEST_F(WindowPairingTest, ASecondStartBringsTheWindowToTheFront) {
    auto mac = startWindow();
    const auto window = display.topWindow();
    const auto other = display.coverScreen();
    ASSERT_EQ(display.topWindow(), other);
    startAgain();
    EXPECT_TRUE(eventually([&] { return display.topWindow() == window; }));
}

TEST_F(WindowPairingTest, ClosingTheWindowLeavesTheProgramRunningAndASecondStartOpensItAgain) {
    auto mac = startWindow();
    display.askToClose(display.topWindow());
    ASSERT_TRUE(eventually([&] { return reader.read().empty(); })) << screen();
    EXPECT_EQ(display.topWindow(), 0U);
    startAgain();
    ASSERT_NO_FATAL_FAILURE(see("Zobrazit QR kód"));
    ASSERT_NO_FATAL_FAILURE(goTo("Zobrazit QR kód"));
    mac->signal(SIGTERM);
    EXPECT_EQ(mac->wait(), 0) << mac->output();
}

} // namespace
} // namespace morvex
