#include "app/ui/TrayItem.h"

#include <QIcon>

#include <utility>

namespace morvex {

TrayItem::TrayItem(const LinkModel& link, std::function<void(const QRect&)> onPress) : link_(link) {
    connect(&link, &LinkModel::changed, this, [this] { showAvailability(); });
    connect(&icon_, &QSystemTrayIcon::activated, this,
            [this, onPress = std::move(onPress)] { onPress(icon_.geometry()); });
    showAvailability();
}

void TrayItem::show() {
    icon_.show();
}

void TrayItem::showAvailability() {
    icon_.setToolTip(QStringLiteral("Morvex – ") + link_.availability());
    auto symbol = link_.symbol();
    if (std::exchange(shownSymbol_, symbol) != symbol)
        icon_.setIcon(QIcon(QStringLiteral(":/pictures/availability/%1.svg").arg(symbol)));
}

} // namespace morvex
