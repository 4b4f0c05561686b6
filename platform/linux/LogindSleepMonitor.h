#pragma once

#include "platform/linux/BusSignal.h"
#include "platform/linux/LogindLock.h"
#include "platform/ports/SleepMonitor.h"

#include <QDBusConnection>

#include <memory>

namespace morvex {

/// Sleep and wake-up as reported by the login service. While somebody is told of sleeps it holds a delay
/// lock, so that the service waits for `letSleep` (by default at most 5 seconds). The lock is taken again
/// after each wake-up; one that nobody needs any more goes with the next sleep. Shutdown is not handled here.
/// Without a bus or the service it reports nothing.
class LogindSleepMonitor final : public SleepMonitor {
  public:
    explicit LogindSleepMonitor(QDBusConnection bus = QDBusConnection::systemBus());

    Connection onSleep(std::function<void()> slot) override;
    Connection onWake(std::function<void()> slot) override;
    void letSleep() override;

  private:
    void listen();
    void delayNextSleep();
    void prepareForSleep(const QDBusMessage& signal);

    QDBusConnection bus_;
    Signal<> sleep_;
    Signal<> wake_;
    std::unique_ptr<BusSignal> signal_;
    std::unique_ptr<LogindLock> delay_;
};

} // namespace morvex
