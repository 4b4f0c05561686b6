#include "app/ui/GlyphProvider.h"

#include <QFile>
#include <QPainter>
#include <QSvgRenderer>

namespace morvex {

GlyphProvider::GlyphProvider() : QQuickImageProvider(QQuickImageProvider::Image) {}

QImage GlyphProvider::requestImage(const QString& id, QSize* size, const QSize& requested) {
    auto slash = id.lastIndexOf(u'/');
    auto image = drawGlyph(id.left(slash), '#' + id.mid(slash + 1).toLatin1(), requested);
    if (size) *size = image.size();
    return image;
}

QImage drawGlyph(const QString& name, const QByteArray& color, QSize size) {
    QFile file(QStringLiteral(":/pictures/") + name + QStringLiteral(".svg"));
    if (!file.open(QIODevice::ReadOnly)) return {};
    QSvgRenderer drawing(file.readAll().replace("currentColor", color));
    if (!size.isValid() || size.isEmpty()) size = drawing.defaultSize();
    QImage image(size, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    drawing.render(&painter);
    return image;
}

} // namespace morvex
