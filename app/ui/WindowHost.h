#pragma once

#include "app/ui/models/CompanionModel.h"

#include <QPointer>
#include <QQmlEngine>
#include <QQuickWindow>

#include <memory>

namespace morvex {

/// The windows and the engine that draws them. Both are loaded when one is first shown and let go when none
/// is open, so that a program in the tray stays small. Main thread.
class WindowHost final : public QObject {
    Q_OBJECT

  public:
    explicit WindowHost(CompanionModel& model) : model_(model) {}

    ~WindowHost() override;

    /// Whether a window that opens by itself may take the keyboard from what the person is doing.
    enum class Focus { take, leave };

    /// Shows the main window, or brings it to the front.
    void showMainWindow(Focus focus);

    /// Shows the tray item's window near this place, or hides it when it is open.
    void toggleMenu(const QRect& trayItem);

    /// Has every text read anew.
    void retranslate();

    /// Null while it is closed.
    [[nodiscard]] QQuickWindow* mainWindow() const { return main_; }

    [[nodiscard]] QQuickWindow* menu() const { return menu_; }

  private:
    QQuickWindow* load(const QString& component);
    void letGo();

    CompanionModel& model_;
    std::unique_ptr<QQmlEngine> engine_;
    QPointer<QQuickWindow> main_;
    QPointer<QQuickWindow> menu_;
};

} // namespace morvex
