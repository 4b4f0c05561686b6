#pragma once

#include "tests/app/ui/ShownCompanion.h"

#include <functional>

namespace morvex {

/// Takes the windows through all their states, for what has to hold in each of them.
class EveryState : public ShownCompanion {
  protected:
    /// `shown` is the window that has the keyboard.
    using Look = std::function<void(const std::string& state, QQuickWindow* shown)>;

    void withoutAPhone(const Look& look);
    void withAPhone(const Look& look);
    void inSheets(const Look& look);
    void inTheTrayWindow(const Look& look);

  private:
    void inMailSheets(const Look& look);
    void lookAtEach(const std::vector<std::pair<std::string, StavParovani>>& states, const Look& look);
};

} // namespace morvex
