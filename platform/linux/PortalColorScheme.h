#pragma once

#include "platform/linux/BusSignal.h"
#include "platform/ports/ColorScheme.h"

#include <QDBusConnection>
#include <QDBusPendingCallWatcher>
#include <QVariant>

#include <memory>

namespace morvex {

/// The preference from the desktop's settings portal (org.freedesktop.appearance, color-scheme), updated by
/// the portal's signal. Without a portal the preference is `none`.
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
