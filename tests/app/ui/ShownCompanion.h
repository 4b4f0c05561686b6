#pragma once

#include "tests/app/ui/UiHarness.h"

#include <QImage>

namespace morvex {

/// A companion with something in every card, and pictures of it.
class ShownCompanion : public UiHarness {
  protected:
    ~ShownCompanion() override;

    void useColors(bool dark);

    /// Folders, tasks of agents, notes and summaries. After the start.
    void fill();
    void ask();
    void showState(StavParovani state);

    /// The whole column of cards, however high it is.
    QImage column();
    /// The card with this title.
    QImage card(const std::string& title);
    QImage pictureOf(QQuickWindow* shown);

    /// How what was asked has ended.
    std::vector<bool> answers;

  private:
    Task<void> note(Task<bool> asked);
};

} // namespace morvex
