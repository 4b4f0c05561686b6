#include "app/ui/models/ViewModel.h"

#include <QMetaProperty>

#include <cstddef>

namespace morvex {

void ViewModel::refresh() {
    const auto& meta = *metaObject();
    const int first = QObject::staticMetaObject.propertyCount();
    told_.resize(static_cast<std::size_t>(meta.propertyCount()));
    for (int index = first; index < meta.propertyCount(); ++index) {
        const auto property = meta.property(index);
        if (!property.hasNotifySignal()) continue;
        auto& told = told_[static_cast<std::size_t>(index)];
        auto value = property.read(this);
        if (value == told) continue;
        told = std::move(value);
        property.notifySignal().invoke(this, Qt::DirectConnection);
    }
    Q_EMIT changed();
}

} // namespace morvex
