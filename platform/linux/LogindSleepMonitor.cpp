#include "platform/linux/LogindSleepMonitor.h"

#include "platform/linux/Logind.h"

#include <utility>

namespace morvex {

LogindSleepMonitor::LogindSleepMonitor(QDBusConnection bus) : bus_(std::move(bus)) {}

void LogindSleepMonitor::watch(Watcher watcher) {
    watcher_ = std::move(watcher);
    signal_ = std::make_unique<BusSignal>(bus_,
                                          BusSignal::Source{Logind::service, Logind::path, Logind::interface,
                                                            QStringLiteral("PrepareForSleep")},
                                          [this](const QDBusMessage& signal) { prepareForSleep(signal); });
    delayNextSleep();
}

void LogindSleepMonitor::unwatch() {
    signal_.reset();
    delay_.reset();
}

void LogindSleepMonitor::letSleep() {
    delay_.reset();
}

void LogindSleepMonitor::delayNextSleep() {
    delay_ = std::make_unique<LogindLock>(
        bus_,
        LogindLock::Request{QStringLiteral("sleep"), QStringLiteral("Morvex se před spánkem odpojí."),
                            QStringLiteral("delay")},
        nullptr);
}

void LogindSleepMonitor::prepareForSleep(const QDBusMessage& signal) {
    if (signal.signature() != QStringLiteral("b")) return;
    if (signal.arguments().first().toBool()) return watcher_.willSleep();
    delayNextSleep();
    watcher_.didWake();
}

} // namespace morvex
