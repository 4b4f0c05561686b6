#pragma once

#include "app/ui/ApprovalNotice.h"
#include "app/ui/LanguageTable.h"
#include "app/ui/TrayItem.h"
#include "app/ui/WindowHost.h"
#include "foundation/Signal.h"
#include "foundation/TaskScope.h"
#include "platform/ports/ColorScheme.h"
#include "platform/ports/Tray.h"

#include <functional>
#include <optional>
#include <string>

namespace morvex {

/// The user interface on a desktop: the tray item, its small window, the main window and the notification of
/// a waiting action. Closing the windows leaves the program running. Needs a QApplication. Main thread.
///
/// Order of calls: the constructor, then `start` once, before or after the companion starts.
class TolvyCompanionApp {
  public:
    struct Services {
        Clock& clock;
        TaskScope& scope; ///< runs what a button starts; stopped and joined before this object is destroyed
        Clipboard& clipboard;
        Notifications& notifications;
        ColorScheme& colors;
        Tray& tray;
        std::string appVersion;
        std::function<void()> quit;
        /// Returns unused memory to the system; called when the last window is closed.
        std::function<void()> releaseMemory;
    };

    TolvyCompanionApp(Companion& companion, Features& features, const Services& services);
    ~TolvyCompanionApp();
    TolvyCompanionApp(const TolvyCompanionApp&) = delete;
    TolvyCompanionApp& operator=(const TolvyCompanionApp&) = delete;

    /// Shows the tray item. If no phone is paired, the main window opens too; if no tray has appeared after
    /// some seconds, it opens as well, since at login the tray may start later than this program. Until the
    /// keys of this computer are loaded it is not known whether there is a phone; the window then opens only
    /// if loading takes longer than a moment.
    void start();

    /// Opens the main window and brings it to the front.
    void openMainWindow();

    /// Handles a press of the tray item, which is at this place on the screen.
    void toggleMenu(const QRect& trayItem) { windows_.toggleMenu(trayItem); }

    [[nodiscard]] CompanionModel& model() { return model_; }

    [[nodiscard]] const WindowHost& windows() const { return windows_; }

  private:
    void openAtStart();
    Task<void> openMainWindowWithoutATray();
    Task<void> openMainWindowWhileKeysAreAwaited();
    void showApproval();
    void followLanguage();
    void followColors();

    CompanionState& state_;
    MacVoiceController& hlas_;
    Clock& clock_;
    TaskScope& scope_;
    ColorScheme& colors_;
    Tray& tray_;
    LanguageTable language_;
    CompanionModel model_;
    WindowHost windows_;
    TrayItem item_;
    ApprovalNotice notice_;
    bool isStarting_ = false; ///< the keys are being loaded, so it is not known yet whether there is a phone
    QPropertyNotifier keysNotifier_;
    Connection colorsChanged_;
};

} // namespace morvex
