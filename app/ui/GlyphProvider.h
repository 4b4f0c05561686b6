#pragma once

#include <QQuickImageProvider>

namespace morvex {

/// The project's drawings in any colour: `image://glyph/NAME/RRGGBB` is `pictures/NAME.svg` with its
/// `currentColor` replaced.
class GlyphProvider final : public QQuickImageProvider {
  public:
    GlyphProvider();

    QImage requestImage(const QString& id, QSize* size, const QSize& requested) override;
};

/// One drawing at a size in pixels; null if there is none with this name.
[[nodiscard]] QImage drawGlyph(const QString& name, const QByteArray& color, QSize size);

} // namespace morvex
