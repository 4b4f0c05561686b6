#include "phone/QrPicture.h"
#include "tests/e2e/OnDesktop.h"
#include "tests/e2e/ToldDescriptions.h"

#include <csignal>
#include <filesystem>

namespace morvex {
namespace {

class WindowPairingTest : public OnDesktop {
  protected:
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
    EXPECT_TRUE(std::filesystem::exists(peerFile()));

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
    EXPECT_FALSE(std::filesystem::exists(peerFile()));
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

TEST_F(WindowPairingTest, AScreenReaderIsToldThatTheCodeWasCopied) {
    ToldDescriptions told(reader.bus());
    auto mac = startWindow();
    ASSERT_NO_FATAL_FAILURE(typeRelayAddress());
    ASSERT_NO_FATAL_FAILURE(pressButton("Zobrazit QR kód"));
    ASSERT_NO_FATAL_FAILURE(see("Načti tento kód v aplikaci Morvex na telefonu."));
    ASSERT_NO_FATAL_FAILURE(pressButton("QR kód"));
    EXPECT_TRUE(eventually([&] { return told.hasHeard("Text kódu je zkopírovaný."); })) << screen();
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
