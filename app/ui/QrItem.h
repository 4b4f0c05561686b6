#pragma once

#include <QImage>
#include <QQuickItem>
#include <QtQml/qqmlregistration.h>

namespace morvex {

/// Draws a text as a QR code of correction level L. Each module covers a whole number of the screen's pixels.
/// The parent must provide the quiet zone.
class QrItem : public QQuickItem {
    Q_OBJECT
    QML_ELEMENT
    Q_PROPERTY(QString text READ text WRITE setText NOTIFY textChanged)
    /// False if the text does not fit into a code.
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
    QImage modules_; ///< one pixel for each module
};

} // namespace morvex
