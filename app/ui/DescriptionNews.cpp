#include "app/ui/DescriptionNews.h"

#include <QAccessible>
#include <QQuickItem>
#include <QQuickWindow>

#include <algorithm>

namespace morvex {

DescriptionNews::DescriptionNews(QQuickWindow& window) : QObject(&window), window_(window) {
    connect(&window, &QQuickWindow::activeFocusItemChanged, this, &DescriptionNews::follow);
}

void DescriptionNews::follow() {
    if (followed_) disconnect(followed_, nullptr, this, nullptr);
    followed_ = nullptr;
    const auto* item = window_.activeFocusItem();
    if (!item) return;
    // The attached type is private to Qt, so it can be found only by its name.
    const auto& parts = item->children();
    const auto found = std::ranges::find_if(
        parts, [](const QObject* part) { return part->inherits("QQuickAccessibleAttached"); });
    if (found == parts.end()) return;
    followed_ = *found;
    connect(followed_, SIGNAL(descriptionChanged()), this, SLOT(tell()));
}

void DescriptionNews::tell() {
    QAccessibleEvent news(followed_->parent(), QAccessible::DescriptionChanged);
    QAccessible::updateAccessibility(&news);
}

} // namespace morvex
