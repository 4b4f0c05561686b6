#pragma once

#include "platform/linux/BusSignal.h"
#include "platform/linux/LogindLock.h"
#include "platform/ports/SleepMonitor.h"

#include <QDBusConnection>

#include <memory>

namespace morvex {

/// Sleep and wake as the login service tells them. While it is watched it holds a delay lock, which makes the
/// service wait for `letSleep` (5 seconds at most, unless the system is set up otherwise); the lock is taken
/// anew after each wake. A shutdown is none of its concern. Without a bus or the service it tells nothing.
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
