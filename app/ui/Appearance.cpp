#include "app/ui/Appearance.h"

#include <QEvent>
#include <QFontInfo>
#include <QGuiApplication>
#include <QPalette>

#include <algorithm>

namespace morvex {

namespace {

constexpr int smallestText = 13;

} // namespace

Appearance::Appearance() {
    qGuiApp->installEventFilter(this);
}

bool Appearance::dark() const {
    return QGuiApplication::palette().color(QPalette::Window).lightness() < 128;
}

int Appearance::textSize() const {
    return std::max(smallestText, QFontInfo(QGuiApplication::font()).pixelSize());
}

bool Appearance::eventFilter(QObject* watched, QEvent* event) {
    if (watched == qGuiApp &&
        (event->type() == QEvent::ApplicationPaletteChange || event->type() == QEvent::ApplicationFontChange))
        Q_EMIT changed();
    return QObject::eventFilter(watched, event);
}

} // namespace morvex
