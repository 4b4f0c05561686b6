#pragma once

#include <QImage>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace morvex {

/// Draws a text as a QR code of the correction level L, each module a whole number of the screen's pixels.
/// The quiet zone around it is left to what it stands on.
class QrItem : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    /// False when the text does not fit into a code.
    Q_PROPERTY(bool drawable READ drawable NOTIFY textChanged)

  public:
    explicit QrItem(QQuickItem* parent = nullptr);

    [[nodiscard]] const QString& text() const { return text_; }

    void setText(const QString& text);

    [[nodiscard]] bool drawable() const { return !modules_.isNull(); }

  Q_SIGNALS:
    void textChanged();

  protected:
    QSGNode* updatePaintNode(QSGNode* old, UpdatePaintNodeData* data) override;
    void geometryChange(const QRectF& now, const QRectF& before) override;

  private:
    [[nodiscard]] QRectF place() const;

    QString text_;
    QImage modules_; ///< a pixel a module
};

} // namespace morvex
