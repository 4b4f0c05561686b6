#pragma once

#include <QObject>
#include <QtQml/qqmlregistration.h>

class QQuickItem;

namespace morvex {

/// A view that makes its rows as they come into sight makes them in any order, but Tab and screen readers go
/// through the children of an item in their own order. This puts them right. Main thread.
class RowOrder : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON

  public:
    /// From now on the children come as they stand, from top to bottom.
    Q_INVOKABLE static void arrange(QQuickItem* parent);
};

} // namespace morvex
