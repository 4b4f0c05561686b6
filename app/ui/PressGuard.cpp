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

/// The duration of a double click.
constexpr std::chrono::milliseconds freshness{400};

/// In pixels; a resting hand moves the pointer by less.
constexpr qreal rest = 10;

bool pressesControls(int key) {
    return key == Qt::Key_Space || key == Qt::Key_Return || key == Qt::Key_Enter;
}

/// The children, topmost (drawn last) first.
QList<QQuickItem*> fromTheTop(const QQuickItem& item) {
    auto children = item.childItems();
    std::ranges::reverse(children);
    const auto isAbove = [](const QQuickItem* one, const QQuickItem* other) { return one->z() > other->z(); };
    // Sorts in place; items with the same z keep their order.
    for (auto child = children.begin(); child != children.end(); ++child)
        std::rotate(std::upper_bound(children.begin(), child, *child, isAbove), child, child + 1);
    return children;
}

/// The topmost item at this place, in coordinates of `item`, that takes presses; null if there is none.
QQuickItem* pressable(QQuickItem* item, QPointF place) {
    if (!item->isVisible() || !item->isEnabled()) return nullptr;
    // No item here extends beyond its parent, except where the parent has no size.
    if (!item->size().isEmpty() && !item->contains(place)) return nullptr;
    for (auto* child : fromTheTop(*item))
        if (auto* found = pressable(child, item->mapToItem(child, place))) return found;
    return item->acceptedMouseButtons().testFlag(Qt::LeftButton) && item->contains(place) ? item : nullptr;
}

} // namespace

PressGuard::PressGuard(QQuickWindow& window, const Clock& clock)
    : QObject(&window), window_(window), clock_(clock) {
    window.installEventFilter(this);
    // Every change is drawn, so checking after each frame sees what the user saw.
    connect(&window, &QQuickWindow::afterAnimating, this, &PressGuard::noteChange);
}

bool PressGuard::eventFilter(QObject*, QEvent* event) {
    switch (event->type()) {
    case QEvent::MouseMove:
        moveTo(static_cast<QMouseEvent*>(event)->position());
        return false;
    case QEvent::Wheel:
        // The user has scrolled, so whatever is under the pointer now was brought there on purpose.
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
    // The text of a field is what was typed, so it is not compared.
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
    // If another item has the focus, the user has moved it there.
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
    // A key that is held down may repeat its action, but must not begin another.
    if (isAnother && (key.isAutoRepeat() || isFresh(lastKey_->time))) return true;
    lastKey_ = {std::move(target), clock_.sinceBoot()};
    return false;
}

} // namespace morvex
