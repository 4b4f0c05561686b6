#pragma once

#include "platform/linux/BusSignal.h"
#include "platform/ports/ColorScheme.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QVariant>

#include <memory>

namespace morvex {

/// The preference as the desktop's settings portal tells it (org.freedesktop.appearance, color-scheme), kept
/// up to date by its signal. Without a portal there is none.
class PortalColorScheme final : public ColorScheme {
  public:
    explicit PortalColorScheme(const QDBusConnection& bus = QDBusConnection::sessionBus());

    [[nodiscard]] Preference preference() const override { return preference_; }

  private:
    void settingChanged(const QDBusMessage& signal);
    void note(QVariant value);

    Preference preference_ = Preference::none;
    std::unique_ptr<QDBusPendingCallWatcher> answer_;
    BusSignal settingChanged_;
};

} // namespace morvex
