#pragma once

#include "app/console/ConsoleShell.h"
#include "tests/support/CompanionHarness.h"

#include <algorithm>
#include <memory>
#include <string>
#include <vector>

namespace morvex {

/// A console on which a test types.
class ConsoleFixture : public CompanionHarness {
  protected:
    ~ConsoleFixture() override {
        shell.reset();
        EXPECT_TRUE(executor.run(scope->join()));
    }

    void startShell() {
        askedPicker = &consolePicker;
        start();
        makeShell();
    }

    void makeShell() {
        shell = std::make_unique<ConsoleShell>(
            *companion, *features,
            ConsoleShell::Services{clock, consolePicker, folders, *scope,
                                   [this](const std::string& text) { lines.push_back(text); },
                                   [this] { ++quits; },
                                   [this](ConsoleQuestions::Typing typing) {
                                       typings.push_back(typing);
                                       linesBeforeTyping = lines;
                                   }});
    }

    std::vector<std::string> type(const std::string& line) {
        lines.clear();
        shell->handle(line);
        executor.runUntilIdle();
        return lines;
    }

    static bool hasLine(const std::vector<std::string>& all, const std::string& line) {
        return std::ranges::find(all, line) != all.end();
    }

    std::unique_ptr<TaskScope> scope = std::make_unique<TaskScope>(executor);
    ConsoleFolderPicker consolePicker;
    std::vector<std::string> lines;
    int quits = 0;
    std::vector<ConsoleQuestions::Typing> typings;
    std::vector<std::string> linesBeforeTyping; ///< printed when the last of `typings` came
    std::unique_ptr<ConsoleShell> shell;
};

} // namespace morvex
