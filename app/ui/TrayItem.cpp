#include "app/ui/TrayItem.h"

#include "app/ui/GlyphProvider.h"
#include "app/ui/ProductColors.h"

#include <QIcon>
#include <QPixmap>

#include <utility>

namespace morvex {

namespace {

/// The shades contrast with both a light panel and a dark one.
QIcon iconOf(const QString& symbol) {
    const auto color = symbol == pictureName(AvailabilitySymbol::attention)
                           ? ProductColors::shade(ProductColors::orange, 0.86F, 0.88F)
                           : ProductColors::shade(ProductColors::blue, 0.8F, 0.81F);
    QIcon icon;
    for (int side : {16, 22, 24, 32, 48, 64})
        icon.addPixmap(QPixmap::fromImage(
            drawGlyph(QStringLiteral("availability/") + symbol, color.name().toLatin1(), {side, side})));
    return icon;
}

} // namespace

TrayItem::TrayItem(const LinkModel& link, Tray& tray, std::function<void(const QRect&)> onPress)
    : link_(link), tray_(tray), onPress_(std::move(onPress)) {}

void TrayItem::show() {
    arrivals_ = tray_.onArrival([this] { appear(); });
    if (tray_.isThere()) appear();
}

void TrayItem::appear() {
    // Qt looks for the kind of tray only once in a process, when the first item is created. An existing item
    // returns to a new tray by itself.
    if (icon_) return;
    icon_.emplace();
    connect(&*icon_, &QSystemTrayIcon::activated, this, &TrayItem::pressed);
    connect(&link_, &LinkModel::changed, this, &TrayItem::showAvailability);
    showAvailability();
    icon_->show();
}

void TrayItem::pressed(QSystemTrayIcon::ActivationReason reason) {
    // The first half of a double click was already reported as a press.
    if (reason != QSystemTrayIcon::DoubleClick) onPress_(icon_->geometry());
}

void TrayItem::showAvailability() {
    icon_->setToolTip(QStringLiteral("Morvex – ") + link_.availability());
    auto symbol = link_.symbol();
    if (std::exchange(shownSymbol_, symbol) != symbol) icon_->setIcon(iconOf(symbol));
}

} // namespace morvex
