#pragma once

#include "foundation/Signal.h"

#include <QObject>
#include <QProperty>
#include <QtQml/qqmlregistration.h>

#include <utility>
#include <vector>

namespace morvex {

/// Base of what the window shows: one signal says that something in it became different, and whoever shows it
/// reads anew. Main thread.
class ViewModel : public QObject {
    Q_OBJECT
    QML_ANONYMOUS

  public:
    /// Has the window read everything anew, as after a change of the language.
    void refresh();

  Q_SIGNALS:
    void changed();

  protected:
    template <class Value> void watch(QProperty<Value>& property) {
        notifiers_.push_back(property.addNotifier([this] { Q_EMIT changed(); }));
    }

    /// Ends with this object.
    void follow(Connection connection) { connections_.push_back(std::move(connection)); }

  private:
    std::vector<QPropertyNotifier> notifiers_;
    std::vector<Connection> connections_;
};

} // namespace morvex
