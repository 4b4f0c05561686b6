#pragma once

#include "foundation/Signal.h"

#include <QObject>
#include <QProperty>
#include <QVariant>
#include <QtQml/qqmlregistration.h>

#include <utility>
#include <vector>

namespace morvex {

/// Base of what the window shows. After a change, only the signals of properties whose values differ are
/// emitted, so that only their views are drawn again. Main thread.
class ViewModel : public QObject {
    Q_OBJECT
    QML_ANONYMOUS

  public:
    /// Compares each property with its last reported value, for example after a change of the language.
    void refresh();

  Q_SIGNALS:
    /// Emitted after the signals of the properties, even if only something that is not a property may have
    /// changed.
    void changed();

  protected:
    template <class Value> void watch(QProperty<Value>& property) {
        notifiers_.push_back(property.addNotifier([this] { refresh(); }));
    }

    /// Keeps the connection until this object is destroyed.
    void follow(Connection connection) { connections_.push_back(std::move(connection)); }

  private:
    std::vector<QVariant> told_; ///< last reported value of each property, by its index
    std::vector<QPropertyNotifier> notifiers_;
    std::vector<Connection> connections_;
};

} // namespace morvex
