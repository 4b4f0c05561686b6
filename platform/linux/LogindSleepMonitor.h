#pragma once

#include "platform/linux/BusSignal.h"
#include "platform/linux/LogindLock.h"
#include "platform/ports/SleepMonitor.h"

#include <QDBusConnection>

#include <memory>

namespace morvex {

/// Sleep and wake-up as reported by the login service. While watched, it holds a delay lock, so that the
/// service waits for `letSleep` (by default at most 5 seconds); the lock is taken again after each wake-up.
/// Shutdown is not handled here. Without a bus or the service it reports nothing.
class LogindSleepMonitor final : public SleepMonitor {
  public:
    explicit LogindSleepMonitor(QDBusConnection bus = QDBusConnection::systemBus());

    void watch(Watcher watcher) override;
    void unwatch() override;
    void letSleep() override;

  private:
    void delayNextSleep();
    void prepareForSleep(const QDBusMessage& signal);

    QDBusConnection bus_;
    Watcher watcher_;
    std::unique_ptr<BusSignal> signal_;
    std::unique_ptr<LogindLock> delay_;
};

} // namespace morvex
