#pragma once

#include <QCoreApplication>
#include <QEventLoop>
#include <QTimer>
#include <gtest/gtest.h>

#include <chrono>

namespace morvex {

/// For adapters that hear of the system on the main loop.
class MainLoopTest : public testing::Test {
  protected:
    MainLoopTest() {
        static int argc = 1;
        static char name[] = "test";
        static char* argv[] = {name, nullptr};
        static QCoreApplication application(argc, argv);
    }

    /// Runs the main loop until the condition holds: false when it does not within a time that no working
    /// system needs.
    template <class Condition> static bool eventually(Condition condition) {
        auto giveUp = std::chrono::steady_clock::now() + std::chrono::seconds(20);
        while (!condition()) {
            if (std::chrono::steady_clock::now() > giveUp) return false;
            QEventLoop loop;
            QTimer::singleShot(std::chrono::milliseconds(5), &loop, &QEventLoop::quit);
            loop.exec();
        }
        return true;
    }
};

} // namespace morvex
