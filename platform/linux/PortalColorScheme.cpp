#include "platform/linux/PortalColorScheme.h"

#include <QDBusPendingReply>
#include <QDBusVariant>

#include <utility>

namespace morvex {

namespace {

constexpr QLatin1StringView service{"org.freedesktop.portal.Desktop"};
constexpr QLatin1StringView path{"/org/freedesktop/portal/desktop"};
constexpr QLatin1StringView interface{"org.freedesktop.portal.Settings"};
constexpr QLatin1StringView group{"org.freedesktop.appearance"};
constexpr QLatin1StringView key{"color-scheme"};

QDBusPendingCall read(const QDBusConnection& bus) {
    auto call = QDBusMessage::createMethodCall(service, path, interface, QStringLiteral("Read"));
    call << QString(group) << QString(key);
    return bus.asyncCall(call);
}

ColorScheme::Preference preferenceOf(uint value) {
    if (value == 1) return ColorScheme::Preference::dark;
    if (value == 2) return ColorScheme::Preference::light;
    return ColorScheme::Preference::none;
}

} // namespace

PortalColorScheme::PortalColorScheme(const QDBusConnection& bus)
    : answer_(std::make_unique<QDBusPendingCallWatcher>(read(bus))),
      settingChanged_(bus, {service, path, interface, QStringLiteral("SettingChanged")},
                      [this](const QDBusMessage& signal) { settingChanged(signal); }) {
    QObject::connect(answer_.get(), &QDBusPendingCallWatcher::finished, answer_.get(), [this] {
        QDBusPendingReply<QDBusVariant> reply = *answer_;
        if (!reply.isError()) note(reply.value().variant());
    });
}

void PortalColorScheme::settingChanged(const QDBusMessage& signal) {
    if (signal.signature() != QStringLiteral("ssv")) return;
    auto arguments = signal.arguments();
    if (arguments[0].toString() != group || arguments[1].toString() != key) return;
    // Drops the pending answer, since Qt may deliver it after a signal that was sent later.
    answer_.reset();
    note(arguments[2].value<QDBusVariant>().variant());
}

void PortalColorScheme::note(QVariant value) {
    // The method Read puts the value into one variant more than the signal does.
    if (value.canConvert<QDBusVariant>()) value = value.value<QDBusVariant>().variant();
    if (value.typeId() != QMetaType::UInt) return;
    auto before = std::exchange(preference_, preferenceOf(value.toUInt()));
    if (before != preference_) tellOfChange();
}

} // namespace morvex
