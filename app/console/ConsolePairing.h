#pragma once

#include "app/companion/Companion.h"
#include "app/companion/StavParovani.h"
#include "app/console/ConsoleOutput.h"

#include <QProperty>

#include <string>

namespace morvex {

/// The console's commands for the pairing, and what is printed about it. Main thread.
class ConsolePairing {
  public:
    enum class Pictures { none, codes };
    enum class Verdict { same, different };

    /// Printed while the vault is asked again for the keys of this computer.
    static constexpr const char* tryingKeys = "Zkouším znovu získat klíče tohoto počítače.";

    /// `codes` means that the output is a terminal that can show a QR code. Both references outlive this
    /// object.
    ConsolePairing(Companion& companion, const ConsoleOutput& output, Pictures pictures);

    void begin();
    /// Judges the number that was on screen when the person began to type. A number that appeared while the
    /// verdict was being typed is not confirmed.
    void judge(Verdict verdict);
    void cancel();
    void unpair();

    /// Called after every line: the person who typed it has seen everything printed before.
    void lineTyped();

  private:
    void tell();
    void show(const StavParovani::OverCislo& compare) const;

    Companion& companion_;
    const ConsoleOutput& output_;
    Pictures pictures_;
    std::string shownNumber_; ///< the first number printed since the last line
    QPropertyNotifier notifier_;
};

} // namespace morvex
