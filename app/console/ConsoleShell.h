#pragma once

#include "app/assembly/Features.h"
#include "app/console/ConsoleApprovals.h"
#include "app/console/ConsoleApps.h"
#include "app/console/ConsoleFolders.h"
#include "app/console/ConsoleMail.h"
#include "app/console/ConsoleOrganizer.h"
#include "app/console/ConsoleOutput.h"
#include "app/console/ConsolePairing.h"
#include "foundation/Clock.h"
#include "foundation/Signal.h"
#include "foundation/TaskScope.h"

#include <QProperty>

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace morvex {

/// The user interface where there is no window: each line typed is a command, and each change prints a line.
/// Main thread.
class ConsoleShell {
  public:
    struct Services {
        const Clock& clock;
        ConsoleFolderPicker& picker;
        const StandardFolders& folders;
        TaskScope& scope;                       ///< runs what a command starts
        std::function<void(std::string)> print; ///< takes one line, or several
        std::function<void()> quit;
        std::function<void(ConsoleQuestions::Typing)> setTyping;
        bool drawsPictures = false; ///< the output is a terminal that can show a QR code
    };

    ConsoleShell(Companion& companion, Features& features, Services services);

    /// Prints that the program runs and which problems occurred before. Called before the first line.
    void greet(const std::string& version);

    /// Handles one line that a person typed.
    void handle(std::string_view line);

  private:
    struct Command;
    static const std::vector<Command>& commands();

    void watch();
    void run(const std::string& trimmed);

    void printHelp() const;
    void printStatus();
    void printAvailability();
    void printNextAttempt() const;
    void tryNow();
    void tellOfAvailability();
    void printWakefulness();
    void printLoginItem();
    void tellOfLeaving();
    void printTasks() const;
    void printTaskTrouble();
    void stopTask();
    void continueTask(const std::string& number);
    void setRelay(const std::string& address);
    void lookAgain();
    void forgetTasks(const std::string& answer);
    Task<void> forgetAndTell();
    Task<void> turnOnAndTell(Integration integration, std::string name);
    void switchIntegration(const std::string& name, bool value);
    void keepAwake(const std::string& word);
    void startAtLogin(const std::string& word);
    /// Prints what to type if the word is not a position of a switch.
    [[nodiscard]] std::optional<bool> readSwitch(const std::string& word) const;

    /// Whether news about the link may still be printed in this minute.
    [[nodiscard]] bool mayTellOfLink();

    Companion& companion_;
    Features& features_;
    Services services_;
    ConsoleOutput output_;
    ConsoleFolders folders_;
    ConsoleQuestions questions_;
    ConsoleApps apps_;
    ConsoleMail mail_;
    ConsoleOrganizer organizer_;
    ConsolePairing pairing_;
    ConsoleApprovals approvals_;
    Clock::Duration minuteOfNews_{0}; ///< when the counted minute began
    int newsOfMinute_ = 0;
    std::string shownAvailability_;
    std::optional<Sentence> shownTaskTrouble_;
    std::vector<QPropertyNotifier> notifiers_;
    Connection tasksChanged_;
};

} // namespace morvex
