#include "app/ui/RowOrder.h"

#include <QQuickItem>

#include <algorithm>

namespace morvex {

void RowOrder::arrange(QQuickItem* parent) {
    auto children = parent->childItems();
    std::ranges::sort(children, {}, &QQuickItem::y);
    for (qsizetype at = 1; at < children.size(); ++at) children[at]->stackAfter(children[at - 1]);
}

} // namespace morvex
