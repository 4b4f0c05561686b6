#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

class QQuickItem;

namespace morvex {

/// Puts rows into the order in which they are shown. A list view creates its rows in any order as they come
/// into sight, but Tab and screen readers follow the order of an item's children. Main thread.
class RowOrder : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

  public:
    /// Sorts the children from top to bottom.
    Q_INVOKABLE static void arrange(QQuickItem* parent);
};

} // namespace morvex
