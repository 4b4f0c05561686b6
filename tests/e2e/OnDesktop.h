#pragma once

#include "tests/e2e/Household.h"
#include "tests/e2e/ScreenReader.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/VirtualDisplay.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace morvex {

/// The whole program on a desktop: its window drawn on a display without a screen, used with a keyboard and
/// read with eyes and ears.
class OnDesktop : public testing::Test, protected Household {
  protected:
    OnDesktop();

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
    void see(const std::string& text);
    /// Tab after Tab until the keyboard is at the item of this name.
    void goTo(const std::string& name);
    void pressButton(const std::string& name);
    /// What is on show, a line each.
    std::string screen() const;

    /// The companion with its window or its tray item.
    std::unique_ptr<Program> start();
    /// A companion without a phone, whose window opens by itself.
    std::unique_ptr<Program> startWindow();
    void startAgain();

    VirtualDisplay display;
    PrivateBus bus;
    ScreenReader reader;

  private:
    ChildProgram::Environment desktop();
};

} // namespace morvex
