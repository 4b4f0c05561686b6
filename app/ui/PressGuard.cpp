#include "app/ui/PressGuard.h"

#include <QKeyEvent>
#include <QLineF>
#include <QMouseEvent>
#include <QTouchEvent>
#include <QWheelEvent>

#include <algorithm>
#include <chrono>

namespace morvex {

namespace {

/// As long as a double click takes.
constexpr std::chrono::milliseconds freshness{400};

/// A hand that rests moves the pointer by less, in pixels.
constexpr qreal rest = 10;

bool pressesControls(int key) {
    return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
}

/// The children, the one that is drawn last first.
QList<QQuickItem*> fromTheTop(const QQuickItem& item) {
    auto children = item.childItems();
    std::ranges::reverse(children);
    const auto isAbove = [](const QQuickItem* one, const QQuickItem* other) { return one->z() > other->z(); };
    // In place, and keeping the order of equals.
    for (auto child = children.begin(); child != children.end(); ++child)
        std::rotate(std::upper_bound(children.begin(), child, *child, isAbove), child, child + 1);
    return children;
}

/// The item on top at this place, in coordinates of `item`, that takes presses; null when there is none.
QQuickItem* pressable(QQuickItem* item, QPointF place) {
    if (!item->isVisible() || !item->isEnabled()) return nullptr;
    // Nothing here is outside of what holds it, but for what is held by something without an extent.
    if (!item->size().isEmpty() && !item->contains(place)) return nullptr;
    for (auto* child : fromTheTop(*item))
        if (auto* found = pressable(child, item->mapToItem(child, place))) return found;
    return item->acceptedMouseButtons().testFlag(Qt::LeftButton) && item->contains(place) ? item : nullptr;
}

} // namespace

PressGuard::PressGuard(QQuickWindow& window, const Clock& clock)
    : QObject(&window), window_(window), clock_(clock) {
    window.installEventFilter(this);
    // What changes is drawn, so that what was looked at stays as it was seen.
    connect(&window, &QQuickWindow::afterAnimating, this, &PressGuard::noteChange);
}

bool PressGuard::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseMove:
        moveTo(static_cast<QMouseEvent*>(event)->position());
        return false;
    case QEvent::Wheel:
        // What is scrolled there was brought there.
        pointer_.reset();
        return false;
    case QEvent::MouseButtonPress:
    case QEvent::MouseButtonDblClick:
        return refusesPress(static_cast<QMouseEvent*>(event)->position());
    case QEvent::TouchBegin:
        return refusesPress(static_cast<QTouchEvent*>(event)->points().first().position());
    case QEvent::KeyPress:
        return refusesKey(*static_cast<QKeyEvent*>(event));
    default:
        return false;
    }
}

PressGuard::Target PressGuard::targetOf(QQuickItem* item) {
    if (!item) return {};
    // The text of a field is what was typed.
    const bool isButton = item->inherits("QQuickAbstractButton");
    return {item, isButton ? item->property("text").toString() : QString(), item->property("subject")};
}

PressGuard::Target PressGuard::at(QPointF place) const {
    return targetOf(pressable(window_.contentItem(), place));
}

bool PressGuard::isFresh(Clock::Duration time) const {
    return clock_.sinceBoot() - time < freshness;
}

void PressGuard::noteChange() {
    noteSubject();
    if (!pointer_) return;
    auto now = at(*pointer_);
    if (now == under_) return;
    if (!isFresh(since_)) seen_ = std::move(under_);
    under_ = std::move(now);
    since_ = clock_.sinceBoot();
    changed_ = since_;
    changedAt_ = *pointer_;
}

void PressGuard::noteSubject() {
    auto now = targetOf(window_.activeFocusItem());
    if (now == focused_) return;
    // Another item has it because somebody moved there.
    if (now.item && now.item == focused_.item) subjectChanged_ = clock_.sinceBoot();
    focused_ = std::move(now);
}

void PressGuard::moveTo(QPointF place) {
    noteChange();
    pointer_ = place;
    if (auto now = at(place); now != under_) {
        under_ = std::move(now);
        since_ = clock_.sinceBoot();
    }
    if (!changed_ || QLineF(changedAt_, place).length() <= rest) return;
    changed_.reset();
    seen_ = {};
}

bool PressGuard::refusesPress(QPointF place) {
    moveTo(place);
    return changed_ && isFresh(*changed_) && !(under_.item && under_ == seen_);
}

bool PressGuard::refusesKey(const QKeyEvent& key) {
    if (!pressesControls(key.key())) {
        lastKey_.reset();
        return false;
    }
    noteSubject();
    if (subjectChanged_ && isFresh(*subjectChanged_)) return true;
    auto target = focused_;
    const bool isAnother = lastKey_ && lastKey_->target != target;
    // A key that is held repeats what it did, and begins nothing.
    if (isAnother && (key.isAutoRepeat() || isFresh(lastKey_->time))) return true;
    lastKey_ = {std::move(target), clock_.sinceBoot()};
    return false;
}

} // namespace morvex
