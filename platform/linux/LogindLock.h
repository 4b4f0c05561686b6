#pragma once

#include "platform/ports/SleepInhibitor.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QDBusUnixFileDescriptor>
#include <QString>

namespace morvex {

/// An inhibitor lock of the login service. It is requested asynchronously at construction and released at
/// destruction, even if the answer arrives later. Main thread.
class LogindLock final : public SleepInhibitor::Token {
  public:
    /// The arguments of the service's method Inhibit.
    struct Request {
        QString what;
        QString why;
        QString mode;
    };

    /// `onFailure` may be empty.
    LogindLock(const QDBusConnection& bus, const Request& request,
               std::function<void(const Error&)> onFailure);

  private:
    void take(const std::function<void(const Error&)>& onFailure);

    QDBusPendingCallWatcher answer_;
    QDBusUnixFileDescriptor lock_;
};

} // namespace morvex
