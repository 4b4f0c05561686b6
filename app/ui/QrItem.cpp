#include "app/ui/QrItem.h"

#include <QQuickWindow>
#include <QSGImageNode>
#include <qrcodegen/qrcodegen.hpp>

#include <algorithm>
#include <cmath>

namespace morvex {

namespace {

constexpr int anyMask = -1;

/// Null if the text is empty or too long.
QImage modulesOf(const std::string& text) {
    using qrcodegen::QrCode, qrcodegen::QrSegment;
    if (text.empty()) return {};
    try {
        auto code = QrCode::encodeSegments(QrSegment::makeSegments(text.c_str()), QrCode::Ecc::LOW,
                                           QrCode::MIN_VERSION, QrCode::MAX_VERSION, anyMask, false);
        const int size = code.getSize();
        QImage image(size, size, QImage::Format_RGB32);
        for (int y = 0; y < size; ++y)
            for (int x = 0; x < size; ++x)
                image.setPixelColor(x, y, code.getModule(x, y) ? Qt::black : Qt::white);
        return image;
    } catch (const qrcodegen::data_too_long&) {
        return {};
    }
}

} // namespace

QrItem::QrItem(QQuickItem* parent) : QQuickItem(parent) {
    setFlag(ItemHasContents);
}

void QrItem::setText(const QString& text) {
    if (text == text_) return;
    text_ = text;
    modules_ = modulesOf(text.toStdString());
    update();
    Q_EMIT textChanged();
}

QSGNode* QrItem::updatePaintNode(QSGNode* old, UpdatePaintNodeData*) {
    if (!drawable() || width() <= 0 || height() <= 0) {
        delete old;
        return nullptr;
    }
    auto* node = old ? static_cast<QSGImageNode*>(old) : window()->createImageNode();
    node->setOwnsTexture(true);
    node->setTexture(window()->createTextureFromImage(modules_));
    node->setFiltering(QSGTexture::Nearest);
    node->setRect(place());
    return node;
}

void QrItem::geometryChange(const QRectF& now, const QRectF& before) {
    QQuickItem::geometryChange(now, before);
    update();
}

QRectF QrItem::place() const {
    const auto ratio = window()->effectiveDevicePixelRatio();
    const auto modules = static_cast<double>(modules_.width());
    const auto pixels = std::max(1.0, std::floor(std::min(width(), height()) * ratio / modules));
    const auto side = pixels * modules / ratio;
    // Centred, and aligned to whole pixels of the screen.
    const auto corner = mapToScene({(width() - side) / 2, (height() - side) / 2});
    const QPointF snapped(std::round(corner.x() * ratio) / ratio, std::round(corner.y() * ratio) / ratio);
    return {mapFromScene(snapped), QSizeF(side, side)};
}

} // namespace morvex
