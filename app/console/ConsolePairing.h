#pragma once

#include "app/companion/Companion.h"
#include "app/companion/StavParovani.h"
#include "app/console/ConsoleOutput.h"

#include <QProperty>

#include <string>

namespace morvex {

/// The commands of the console about the pairing, and what is printed of it. Main thread.
class ConsolePairing {
  public:
    enum class Pictures { none, codes };
    enum class Verdict { same, different };

    /// While the vault is asked for the keys of this computer once more.
    static constexpr const char* zkousimKlice = "Zkouším znovu získat klíče tohoto počítače.";

    /// With `codes` the output is a terminal that can show a QR code. Both others outlive this object.
    ConsolePairing(Companion& companion, const ConsoleOutput& output, Pictures pictures);

    void begin();
    /// About the number that was shown to whoever typed this. One that came while it was typed is not
    /// confirmed.
    void judge(Verdict verdict);
    void cancel();
    void unpair();

    /// After every line: who typed it has seen all that was printed before.
    void lineTyped();

  private:
    void tell();
    void show(const StavParovani::OverCislo& compare) const;

    Companion& companion_;
    const ConsoleOutput& output_;
    Pictures pictures_;
    std::string shownNumber_; ///< the first that was printed since the last line
    QPropertyNotifier notifier_;
};

} // namespace morvex
