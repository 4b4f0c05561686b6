#pragma once

#include "platform/ports/SleepInhibitor.h"

#include <QDBusConnection>

namespace morvex {

/// Idle sleep held off by the login service. Without a bus or the service every request fails.
class LogindSleepInhibitor final : public SleepInhibitor {
  public:
    explicit LogindSleepInhibitor(QDBusConnection bus = QDBusConnection::systemBus());

    std::unique_ptr<Token> holdOffIdleSleep(const std::string& reason,
                                            std::function<void(const Error&)> onFailure) override;

  private:
    QDBusConnection bus_;
};

} // namespace morvex
