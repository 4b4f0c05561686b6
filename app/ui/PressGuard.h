#pragma once

#include "foundation/Clock.h"

#include <QObject>
#include <QPointer>
#include <QQuickItem>
#include <QQuickWindow>

#include <optional>

class QKeyEvent;

namespace morvex {

/// Keeps a press from what a person cannot have meant: a control that has come under the pointer by itself,
/// or has come to be about something else, takes none for a moment, and the second of two quick presses of a
/// key counts only for what took the first one. What had been there before and comes back takes a press at
/// once, so that news that come and go above a button do not lock it. So the second half of a double click is
/// lost on whatever the first half brought there, a row that moves up, a sheet, the next question under the
/// same button. One for each window, which owns it. Main thread.
class PressGuard final : public QObject {
    Q_OBJECT

  public:
    PressGuard(QQuickWindow& window, const Clock& clock);

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

  private:
    /// A control, and what it is about at the moment.
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
    /// Notes whether what is under the pointer has become another thing while the pointer rested.
    void noteChange();
    /// Notes whether the control with the keyboard has come to be about something else.
    void noteSubject();
    void moveTo(QPointF place);
    [[nodiscard]] bool refusesPress(QPointF place);
    [[nodiscard]] bool refusesKey(const QKeyEvent& key);

    QQuickWindow& window_;
    const Clock& clock_;
    std::optional<QPointF> pointer_;
    Target under_; ///< the pointer, when it was looked at last
    Clock::Duration since_{0};
    Target seen_; ///< what had been there long enough, before what is there now
    std::optional<Clock::Duration> changed_;
    QPointF changedAt_;
    Target focused_;
    std::optional<Clock::Duration> subjectChanged_;
    std::optional<KeyPress> lastKey_;
};

} // namespace morvex
