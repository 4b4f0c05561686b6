#pragma once

#include <QDBusConnection>
#include <QDBusMessage>
#include <QObject>

#include <functional>

namespace morvex {

/// Receives one signal of a service on a message bus while it lives. Main thread; without a bus it receives
/// nothing.
class BusSignal final : public QObject {
    Q_OBJECT

  public:
    struct Source {
        QString service;
        QString path;
        QString interface;
        QString signal;
    };

    BusSignal(QDBusConnection bus, const Source& source, std::function<void(const QDBusMessage&)> onSignal);

  private Q_SLOTS:
    void arrived(const QDBusMessage& message);

  private:
    std::function<void(const QDBusMessage&)> onSignal_;
};

} // namespace morvex
