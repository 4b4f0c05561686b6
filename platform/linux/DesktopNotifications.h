#pragma once

#include "platform/linux/BusSignal.h"
#include "platform/ports/Notifications.h"

#include <QDBusConnection>
#include <QObject>

#include <cstdint>
#include <optional>

namespace morvex {

/// The notification server of the desktop (the desktop standard for notifications, 1.2). Without a session
/// bus or a server nothing is shown.
class DesktopNotifications final : public Notifications {
  public:
    explicit DesktopNotifications(const QDBusConnection& bus = QDBusConnection::sessionBus());

    void show(Notice notice) override;
    void withdraw() override;

  private:
    void shown(std::uint64_t generation, std::uint32_t id);
    void closeOnServer(std::uint32_t id) const;
    void actionInvoked(const QDBusMessage& signal);
    void closed(const QDBusMessage& signal);

    QDBusConnection bus_;
    std::optional<Notice> notice_;
    std::uint32_t id_ = 0;         ///< the server's number of the notice; 0 until it has said it
    std::uint64_t generation_ = 0; ///< of the last notice, so that a late answer to an older one is known
    QObject answers_;              ///< owns the calls that wait for an answer
    BusSignal actionInvoked_;
    BusSignal closed_;
};

} // namespace morvex
