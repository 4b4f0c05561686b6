#pragma once

#include "foundation/Clock.h"
#include "foundation/Signal.h"
#include "foundation/TaskScope.h"
#include "platform/ports/LoginItem.h"
#include "platform/ports/PowerMonitor.h"
#include "platform/ports/SleepInhibitor.h"
#include "platform/ports/SleepMonitor.h"
#include "platform/ports/UserDefaults.h"
#include "shared/base/Sentence.h"

#include <QProperty>

#include <functional>
#include <memory>
#include <optional>

namespace morvex {

/// Wakefulness: keeps this computer reachable for the phone. It watches the power source, holds off idle
/// sleep on mains power when the user wants that, starts the program at login, and tells of sleep and wake.
/// Battery power always lets the computer sleep. Main thread only.
class Bdelost {
  public:
    /// All references outlive this object. `scope` runs the waits; stopping it ends them.
    struct Services {
        PowerMonitor& power;
        SleepMonitor& sleep;
        SleepInhibitor& inhibitor;
        LoginItem& loginItem;
        UserDefaults& defaults;
        Clock& clock;
        TaskScope& scope;
    };

    /// Views read and watch this; only `Bdelost` writes.
    struct Stav {
        QProperty<bool> spoustetPoPrihlaseni{false};
        QProperty<bool> drzetVzhuru{false}; ///< what the user wants
        QProperty<bool> naNapajeni{false};  ///< on mains power
        QProperty<bool> spi{false};         ///< from the news of a sleep to the news of the wake
        /// The last problem with the start at login.
        QProperty<std::optional<Sentence>> potiz;
        /// Why the computer may fall asleep although it should not.
        QProperty<std::optional<Sentence>> keepAwakeTrouble;
    };

    explicit Bdelost(Services services);
    Bdelost(const Bdelost&) = delete;
    Bdelost& operator=(const Bdelost&) = delete;

    [[nodiscard]] Stav& stav() { return stav_; }

    /// Afterwards the field shows the actual setting, even if the change failed.
    void setSpoustetPoPrihlaseni(bool startsAtLogin);
    void setDrzetVzhuru(bool keepAwake);

    [[nodiscard]] Sentence stavText() const;

    /// Lets the computer fall asleep: whoever was told by `naUsnuti` is ready. The system waits at most 3
    /// seconds for this call.
    void allowSleep();

    /// Told when this computer falls asleep; it waits for `allowSleep` only if somebody is told.
    [[nodiscard]] Connection naUsnuti(std::function<void()> slot);
    /// Told when it has woken up and the power source is known again.
    [[nodiscard]] Connection naProbuzeni(std::function<void()> slot);

  private:
    Task<void> watchPower();
    Task<void> limitWait(int spanek);
    void readPower();
    void applyActivity();
    void fallAsleep();
    void wakeUp();

    Services services_;
    Stav stav_;
    std::unique_ptr<SleepInhibitor::Token> aktivita_;
    int spanek_ = 0; ///< number of the last sleep
    Signal<> usnuti_;
    Signal<> probuzeni_;
    Connection sleeps_;
    Connection wakes_;
};

} // namespace morvex
