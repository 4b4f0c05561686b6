#pragma once

#include "app/ui/TolvyCompanionApp.h"
#include "platform/memory/FakeClipboard.h"
#include "platform/memory/FakeColorScheme.h"
#include "platform/memory/FakeNotifications.h"
#include "tests/support/CompanionHarness.h"

#include <QAccessible>

#include <memory>
#include <string>
#include <vector>

namespace morvex {

/// A companion among fakes with its windows, used as a screen reader uses them: by the names and the actions
/// of what they hold.
class UiHarness : public CompanionHarness {
  protected:
    ~UiHarness() override;

    /// The face of a companion that was started before.
    void openUi();
    /// Runs both the companion and the windows until nothing moves.
    void settle();

    [[nodiscard]] QQuickWindow* window() const { return ui->windows().mainWindow(); }

    [[nodiscard]] QQuickWindow* menu() const { return ui->windows().menu(); }

    /// The names of what the window shows with this role, from top to bottom.
    std::vector<std::string> names(QAccessible::Role role, QQuickWindow* in = nullptr);
    /// The names of all that can be pressed, switched, chosen or typed into now.
    std::vector<std::string> usableControls();
    /// Everything that can be read in the window.
    std::string texts(QQuickWindow* in = nullptr);
    /// Presses the button or switch of this name.
    void press(const std::string& name, QQuickWindow* in = nullptr);
    /// Types into the field of this name, which is empty.
    void type(const std::string& name, const std::string& text);
    /// Whether the switch of this name is on.
    bool isOn(const std::string& name);

    TaskScope uiScope{executor};
    FakeClipboard clipboard;
    FakeNotifications notifications;
    FakeColorScheme colors;
    int quits = 0;
    std::unique_ptr<TolvyCompanionApp> ui;

  private:
    QAccessibleInterface* find(const std::string& name, QQuickWindow* in);
};

} // namespace morvex
