#pragma once

#include "app/ui/TolvyCompanionApp.h"
#include "foundation/TaskScope.h"
#include "platform/memory/FakeClipboard.h"
#include "platform/memory/FakeColorScheme.h"
#include "platform/memory/FakeNotifications.h"
#include "platform/memory/FakeTray.h"
#include "tests/support/PairingHarness.h"

#include <QAccessible>
#include <QTest>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace morvex {

/// A companion among fakes with its windows, used as a screen reader uses them: by the names and the actions
/// of what they hold.
class UiHarness : public PairingHarness {
  protected:
    ~UiHarness() override;

    /// The face of a companion that was started before, with its main window.
    void openUi();
    /// The same as a program starts it.
    void startUi();
    /// Runs both the companion and the windows until nothing moves.
    void settle();

    [[nodiscard]] QQuickWindow* window() const { return ui->windows().mainWindow(); }

    [[nodiscard]] QQuickWindow* menu() const { return ui->windows().menu(); }

    /// The names of what the window shows with this role, from top to bottom.
    std::vector<std::string> names(QAccessible::Role role, QQuickWindow* in = nullptr);
    /// The names of all that can be pressed, switched, chosen or typed into now: while a sheet is open, in
    /// it.
    std::vector<std::string> usableControls(QQuickWindow* in = nullptr);
    [[nodiscard]] static bool isControl(QAccessibleInterface* node);
    /// Everything that is told to a screen reader.
    static void walk(QQuickWindow* in, const std::function<void(QAccessibleInterface*)>& visit);
    /// Everything that a screen reader can tell of the window, a line each.
    std::string texts(QQuickWindow* in = nullptr);
    /// Whether a name, a description or a line of one of them is exactly this sentence.
    bool reads(const std::string& sentence, QQuickWindow* in = nullptr);

    /// Whether this part is anywhere in it: for what must not be there at all.
    bool mentions(const std::string& part, QQuickWindow* in = nullptr) { return texts(in).contains(part); }

    /// Presses the button or switch of this name.
    void press(const std::string& name, QQuickWindow* in = nullptr);
    /// What stands in the field of this name, also where a screen reader is not told.
    std::string typedInto(const std::string& name);
    /// Has this text in the field of this name, which keeps the keyboard.
    void type(const std::string& name, const std::string& text);
    /// Opens the main window and gives it the keyboard.
    void openWithKeyboard();
    void giveKeyboard(QQuickWindow* to);
    /// Presses a key in the window that has the keyboard.
    void give(Qt::Key key, QQuickWindow* in = nullptr);
    /// The name of what has the keyboard.
    std::string focused(QQuickWindow* in = nullptr);
    /// What a screen reader adds to that name.
    std::string focusedDescription();
    /// Presses Tab until the control of this name has the keyboard.
    void goTo(const std::string& name);
    /// Notes the end of a question in `answers`.
    Task<void> note(Task<bool> asked);
    /// Whether the switch of this name is on.
    bool isOn(const std::string& name);

    TaskScope uiScope{executor};
    FakeClipboard clipboard;
    FakeNotifications notifications;
    FakeColorScheme colors;
    FakeTray tray;
    std::vector<bool> answers; ///< how what was asked has ended
    int quits = 0;
    int releases = 0; ///< of the memory of windows that are closed
    std::unique_ptr<TolvyCompanionApp> ui;

  private:
    void makeUi();
    QAccessibleInterface* find(const std::string& name, QQuickWindow* in);
    QAccessibleInterface* findField(const std::string& name);
};

} // namespace morvex
