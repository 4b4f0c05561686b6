#include "platform/linux/BusSignal.h"

#include <utility>

namespace morvex {

BusSignal::BusSignal(QDBusConnection bus, const Source& source,
                     std::function<void(const QDBusMessage&)> onSignal)
    : onSignal_(std::move(onSignal)) {
    bus.connect(source.service, source.path, source.interface, source.signal, this,
                SLOT(arrived(QDBusMessage)));
}

void BusSignal::arrived(const QDBusMessage& message) {
    onSignal_(message);
}

} // namespace morvex
