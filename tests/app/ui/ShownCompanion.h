#pragma once

#include "tests/support/UiHarness.h"

#include <QImage>

namespace morvex {

/// A companion with something in every card, and pictures of it.
class ShownCompanion : public UiHarness {
  protected:
    ~ShownCompanion() override;

    void useColors(bool dark);

    /// Calendars of two accounts. Before the start.
    void haveCalendars();
    /// Folders, tasks of agents, notes and summaries. After the start.
    void fill();
    /// A custom app of the phone and one of this computer.
    void addApps();
    /// Two direct mail accounts, the second one incomplete.
    void addMailAccounts();
    void ask();
    void ask(const std::string& title, const std::string& detail);
    void showState(StavParovani state);

    static constexpr int usualWidth = 720;

    /// What a person sees: the picture for its shape, the texts in it for what they say.
    struct Shown {
        QImage picture;
        std::string texts; ///< a line each, in the order of the items
    };

    /// The whole column of cards, however high it is.
    Shown column(int width = usualWidth);
    /// The card with this title.
    Shown card(const std::string& title);
    Shown pictureOf(QQuickWindow* shown);

    /// Against the approved texts of this name, and its approved picture of the scale in force.
    void expectApproved(const Shown& shown, const std::string& name);

  private:
    QImage drawn(QQuickWindow* shown);
    /// Shows fixed words instead of the folder and the identities of this run.
    void replaceChance(QQuickItem& item);
};

} // namespace morvex
