#include "platform/linux/LogindSleepMonitor.h"

#include "platform/linux/Logind.h"

#include <utility>

namespace morvex {

LogindSleepMonitor::LogindSleepMonitor(QDBusConnection bus) : bus_(std::move(bus)) {}

Connection LogindSleepMonitor::onSleep(std::function<void()> slot) {
    auto connection = sleep_.connect(std::move(slot));
    listen();
    if (!delay_) delayNextSleep();
    return connection;
}

Connection LogindSleepMonitor::onWake(std::function<void()> slot) {
    listen();
    return wake_.connect(std::move(slot));
}

void LogindSleepMonitor::letSleep() {
    delay_.reset();
}

void LogindSleepMonitor::listen() {
    if (signal_) return;
    signal_ = std::make_unique<BusSignal>(bus_,
                                          BusSignal::Source{Logind::service, Logind::path, Logind::interface,
                                                            QStringLiteral("PrepareForSleep")},
                                          [this](const QDBusMessage& signal) { prepareForSleep(signal); });
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
    if (!sleep_.isHeard()) letSleep();
    if (signal.arguments().first().toBool()) return sleep_.tell();
    if (sleep_.isHeard()) delayNextSleep();
    wake_.tell();
}

} // namespace morvex
