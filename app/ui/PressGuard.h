#pragma once

#include "foundation/Clock.h"

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>

#include <optional>

class QKeyEvent;

namespace morvex {

/// Refuses presses that the user cannot have meant. A control that has come under the pointer by itself, or
/// whose subject has changed, takes no press for a moment. The second of two quick key presses counts only
/// for the control that took the first. So the second half of a double click does not reach whatever the
/// first half brought there: a row that moved up, a sheet, the next question under the same button. A control
/// that was there before and comes back takes a press at once, so that messages that come and go above a
/// button do not lock it. One for each window, which owns it. Main thread.
class PressGuard final : public QObject {
    Q_OBJECT

  public:
    PressGuard(QQuickWindow& window, const Clock& clock);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    /// A control and its current subject.
    struct Target {
        QPointer<QQuickItem> item;
        QString words;
        QVariant subject;
        bool operator==(const Target&) const = default;
    };

    struct KeyPress {
        Target target;
        Clock::Duration time;
    };

    static Target targetOf(QQuickItem* item);
    [[nodiscard]] Target at(QPointF place) const;
    [[nodiscard]] bool isFresh(Clock::Duration time) const;
    /// Notes whether the target under the pointer has changed while the pointer rested.
    void noteChange();
    /// Notes whether the subject of the focused control has changed.
    void noteSubject();
    void moveTo(QPointF place);
    [[nodiscard]] bool refusesPress(QPointF place);
    [[nodiscard]] bool refusesKey(const QKeyEvent& key);

    QQuickWindow& window_;
    const Clock& clock_;
    std::optional<QPointF> pointer_;
    Target under_; ///< the target under the pointer at the last check
    Clock::Duration since_{0};
    Target seen_; ///< the previous target, if it had been there long enough
    std::optional<Clock::Duration> changed_;
    QPointF changedAt_;
    Target focused_;
    std::optional<Clock::Duration> subjectChanged_;
    std::optional<KeyPress> lastKey_;
};

} // namespace morvex
