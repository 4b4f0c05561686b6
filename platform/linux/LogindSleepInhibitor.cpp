#include "platform/linux/LogindSleepInhibitor.h"

#include "platform/linux/LogindLock.h"

#include <utility>

namespace morvex {

LogindSleepInhibitor::LogindSleepInhibitor(QDBusConnection bus) : bus_(std::move(bus)) {}

std::unique_ptr<SleepInhibitor::Token>
LogindSleepInhibitor::holdOffIdleSleep(const std::string& reason,
                                       std::function<void(const Error&)> onFailure) {
    return std::make_unique<LogindLock>(
        bus_,
        LogindLock::Request{QStringLiteral("idle"), QString::fromStdString(reason), QStringLiteral("block")},
        std::move(onFailure));
}

} // namespace morvex
