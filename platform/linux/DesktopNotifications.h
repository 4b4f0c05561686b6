#pragma once

#include "platform/linux/BusSignal.h"
#include "platform/ports/Notifications.h"

#include <QDBusConnection>
#include <QObject>

#include <cstdint>
#include <optional>

namespace morvex {

/// Uses the desktop's notification server (org.freedesktop.Notifications 1.2). Without a session bus or a
/// server nothing is shown.
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
    std::uint32_t id_ = 0;         ///< the server's id of the notice; 0 until the server has answered
    std::uint64_t generation_ = 0; ///< number of the last notice, to recognise late answers to older ones
    QObject answers_;              ///< owns the pending calls
    BusSignal actionInvoked_;
    BusSignal closed_;
};

} // namespace morvex
