#pragma once

#include "tests/e2e/ScreenReader.h"
#include "tests/support/Household.h"
#include "tests/support/PrivateBus.h"
#include "tests/support/VirtualDisplay.h"

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace morvex {

/// The whole program on a desktop: its window is drawn on a virtual display, used with a keyboard, and
/// checked through pictures and a screen reader.
class OnDesktop : public testing::Test, protected Household {
  protected:
    OnDesktop();

    /// Waits until the condition holds; returns false after thirty seconds, far more than a working system
    /// needs.
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
    /// Presses Tab until the item of this name has the keyboard focus.
    void goTo(const std::string& name);
    void pressButton(const std::string& name);
    /// The visible texts, one per line.
    std::string screen() const;

    /// Starts the companion, which shows its window or its tray item.
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
