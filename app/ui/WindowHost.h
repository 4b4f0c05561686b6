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

/// The windows and the engine that draws them. Both are loaded when one is first shown and let go when none
/// is open, so that a program in the tray stays small. Main thread.
class WindowHost final : public QObject {
    Q_OBJECT

  public:
    /// `freed` is called when the last window and its engine are gone.
    WindowHost(CompanionModel& model, const Clock& clock, std::function<void()> freed)
        : model_(model), clock_(clock), freed_(std::move(freed)) {}

    ~WindowHost() override;

    /// Whether a window that opens by itself may take the keyboard from what the person is doing.
    enum class Focus { take, leave };

    /// Shows the main window, or brings it to the front.
    void showMainWindow(Focus focus);

    /// Shows the tray item's window near this place, or hides it when it is open. A press of the item takes
    /// the keyboard from an open one, which closes it; such a press does not open it again. The second half
    /// of a double click does nothing.
    void toggleMenu(const QRect& trayItem);

    /// Has every text read anew.
    void retranslate();

    /// Null while it is closed.
    [[nodiscard]] QQuickWindow* mainWindow() const { return main_; }

    [[nodiscard]] QQuickWindow* menu() const { return menu_; }

  private:
    QQuickWindow* load(const QString& component);
    /// Makes it a new window for the desktop, with all that it holds. Window managers give the keyboard to
    /// one that was minimized, whatever it asks for.
    void makeUnknown(QQuickWindow& window);
    void letGo();

    CompanionModel& model_;
    const Clock& clock_;
    std::function<void()> freed_;
    std::unique_ptr<QQmlEngine> engine_;
    QPointer<QQuickWindow> main_;
    QPointer<QQuickWindow> menu_;
    bool hiding_ = false; ///< what becomes invisible now is not closed
    /// Both since the start of the computer.
    std::optional<Clock::Duration> itemPressed_;
    std::optional<Clock::Duration> menuClosed_;
};

} // namespace morvex
