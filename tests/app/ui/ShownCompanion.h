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
    /// A custom app of the phone and one of this computer.
    void addApps();
    void ask();
    void ask(const std::string& title, const std::string& detail);
    void showState(StavParovani state);

    static constexpr int usualWidth = 720;

    /// The whole column of cards, however high it is.
    QImage column(int width = usualWidth);
    /// The card with this title.
    QImage card(const std::string& title);
    QImage pictureOf(QQuickWindow* shown);

    /// Against the approved picture of this name and of the scale in force.
    void expectApproved(const QImage& picture, const std::string& name);

  private:
    /// Shows fixed words instead of the folder and the identities of this run.
    void replaceChance(QQuickItem& item);
};

} // namespace morvex
