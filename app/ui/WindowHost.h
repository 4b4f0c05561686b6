#pragma once

#include "app/ui/models/CompanionModel.h"
#include "foundation/Clock.h"

#include <QPointer>
#include <QQmlEngine>
#include <QQuickWindow>

#include <functional>
#include <memory>
#include <optional>
#include <utility>

namespace morvex {

/// The windows and the QML engine that draws them. The engine and a window are created when a window is first
/// shown, and destroyed when none is open, so that a program in the tray uses little memory. Main thread.
class WindowHost final : public QObject {
    Q_OBJECT

  public:
    /// `freed` is called after the last window and the engine have been destroyed.
    WindowHost(CompanionModel& model, const Clock& clock, std::function<void()> freed)
        : model_(model), clock_(clock), freed_(std::move(freed)) {}

    ~WindowHost() override;

    /// Whether a window that opens may take the focus from what the user is doing.
    enum class Focus { take, leave };

    /// Shows the main window, or brings it to the front.
    void showMainWindow(Focus focus);

    /// Shows the tray item's window near this place, or hides it if it is open. A press of the tray item
    /// makes an open window lose the focus, so it closes; that press must not open it again. The second half
    /// of a double click does nothing.
    void toggleMenu(const QRect& trayItem);

    /// Makes the windows read every text again.
    void retranslate();

    /// Null while the window is closed.
    [[nodiscard]] QQuickWindow* mainWindow() const { return main_; }

    [[nodiscard]] QQuickWindow* menu() const { return menu_; }

  private:
    QQuickWindow* load(const QString& component);
    /// Makes the window and its content appear as a new one to the desktop, because window managers focus a
    /// window that was minimized, whatever it asks for.
    void makeUnknown(QQuickWindow& window);
    void letGo();

    CompanionModel& model_;
    const Clock& clock_;
    std::function<void()> freed_;
    std::unique_ptr<QQmlEngine> engine_;
    QPointer<QQuickWindow> main_;
    QPointer<QQuickWindow> menu_;
    bool hiding_ = false; ///< a window that becomes invisible now is not being closed
    /// Times of both events, counted from the boot of the computer.
    std::optional<Clock::Duration> itemPressed_;
    std::optional<Clock::Duration> menuClosed_;
};

} // namespace morvex
