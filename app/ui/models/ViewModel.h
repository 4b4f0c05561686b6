#pragma once

#include "foundation/Signal.h"

#include <QObject>
#include <QProperty>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

#include <utility>
#include <vector>

namespace morvex {

/// Base of what the window shows. A change of what lies behind it is told by the signals of those properties
/// whose values have become different, so that only what shows them is drawn again. Main thread.
class ViewModel : public QObject {
    Q_OBJECT
    QML_ANONYMOUS

  public:
    /// Compares each property with what was told of it last, as after a change of the language.
    void refresh();

  Q_SIGNALS:
    /// Behind the signals of the properties, also where only what is no property may have changed.
    void changed();

  protected:
    template <class Value> void watch(QProperty<Value>& property) {
        notifiers_.push_back(property.addNotifier([this] { refresh(); }));
    }

    /// Ends with this object.
    void follow(Connection connection) { connections_.push_back(std::move(connection)); }

  private:
    std::vector<QVariant> told_; ///< of each property, by its index
    std::vector<QPropertyNotifier> notifiers_;
    std::vector<Connection> connections_;
};

} // namespace morvex
