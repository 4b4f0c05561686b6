#include "tests/support/UiHarness.h"
#include "tests/support/VirtualDisplay.h"

#include <QApplication>
#include <QQuickWindow>

#include <chrono>
#include <cstdlib>
#include <memory>
#include <thread>

namespace morvex {
namespace {

/// The companion's window among those of another program, on a display with a window manager.
class ApprovalInFrontTest : public UiHarness {
  protected:
    struct Desk {
        Desk() {
            display.startWindowManager();
            for (const auto& [variable, value] :
                 {std::pair{"DISPLAY", display.name().c_str()}, {"QT_QPA_PLATFORM", "xcb"}})
                ::setenv(variable, value, 1);
            QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
            application = std::make_unique<QApplication>(count, arguments);
        }

        VirtualDisplay display;
        int count = 1;
        char name[5] = "test";
        char* arguments[2] = {name, nullptr};
        std::unique_ptr<QApplication> application;
    };

    static void SetUpTestSuite() { desk = std::make_unique<Desk>(); }

    static void TearDownTestSuite() { desk.reset(); }

    template <class Condition> bool eventually(Condition condition) {
        const auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(30);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > giveUp) return false;
            settle();
            std::this_thread::sleep_for(std::chrono::milliseconds(5));
        }
        return true;
    }

    bool isOnTop() { return window() && display().isOnTop(static_cast<xcb_window_t>(window()->winId())); }

    /// The main window as a person has it who uses it.
    void openWithTheKeyboard() {
        start();
        openUi();
        ASSERT_TRUE(eventually([&] { return isOnTop() && window()->isActive(); }));
    }

    void useAnotherProgram() {
        other = display().openAnotherProgram();
        ASSERT_TRUE(
            eventually([&] { return display().isOnTop(other) && display().withKeyboard() == other; }));
        ASSERT_FALSE(isOnTop());
    }

    void ask() {
        executor.start(
            note(companion->schvalovani().pozadat("mac.mail.send", "Odeslat e-mail", "Nahlas.", "")));
        settle();
    }

    static Task<void> note(Task<bool> asked) { co_await std::move(asked); }

    void expectInFrontWithoutTheKeyboard() {
        EXPECT_TRUE(eventually([&] { return isOnTop(); }));
        display().press('a');
        EXPECT_TRUE(eventually([&] { return display().heardKey(other); })) << "it goes where it did before";
        EXPECT_EQ(display().withKeyboard(), other);
    }

    static VirtualDisplay& display() { return desk->display; }

    static inline std::unique_ptr<Desk> desk;
    xcb_window_t other = 0;
};

TEST_F(ApprovalInFrontTest, AClosedWindowOpensAboveTheProgramThatKeepsTheKeyboard) {
    ASSERT_NO_FATAL_FAILURE(openWithTheKeyboard());
    window()->close();
    ASSERT_NO_FATAL_FAILURE(useAnotherProgram());
    ask();
    expectInFrontWithoutTheKeyboard();
}

TEST_F(ApprovalInFrontTest, ACoveredWindowComesAboveTheProgramThatKeepsTheKeyboard) {
    ASSERT_NO_FATAL_FAILURE(openWithTheKeyboard());
    ASSERT_NO_FATAL_FAILURE(useAnotherProgram());
    ask();
    expectInFrontWithoutTheKeyboard();
}

TEST_F(ApprovalInFrontTest, AMinimizedWindowComesBackAboveTheProgramThatKeepsTheKeyboard) {
    ASSERT_NO_FATAL_FAILURE(openWithTheKeyboard());
    window()->showMinimized();
    ASSERT_TRUE(eventually([&] { return !isOnTop(); }));
    ASSERT_NO_FATAL_FAILURE(useAnotherProgram());
    ask();
    expectInFrontWithoutTheKeyboard();
}

TEST_F(ApprovalInFrontTest, AWindowThatThePersonAsksForTakesTheKeyboard) {
    ASSERT_NO_FATAL_FAILURE(openWithTheKeyboard());
    ASSERT_NO_FATAL_FAILURE(useAnotherProgram());
    ui->openMainWindow();
    EXPECT_TRUE(eventually([&] { return isOnTop() && window()->isActive(); }));
}

} // namespace
} // namespace morvex
