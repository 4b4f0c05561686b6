#pragma once

#include "app/ui/ProductColors.h"

#include <QObject>
#include <QtQml/qqmlregistration.h>

namespace morvex {

/// The desktop's settings for windows: light or dark, and the size of text. Main thread.
class Appearance : public QObject {
    Q_OBJECT
    QML_ELEMENT
    QML_SINGLETON
    Q_PROPERTY(bool dark READ dark NOTIFY changed)
    Q_PROPERTY(int textSize READ textSize NOTIFY changed)
    Q_PROPERTY(QColor blue READ blue CONSTANT)
    Q_PROPERTY(QColor orange READ orange CONSTANT)

  public:
    Appearance();

    [[nodiscard]] bool dark() const;
    /// Size of body text in pixels.
    [[nodiscard]] int textSize() const;

    [[nodiscard]] static QColor blue() { return ProductColors::blue; }

    [[nodiscard]] static QColor orange() { return ProductColors::orange; }

  Q_SIGNALS:
    void changed();

  protected:
    bool eventFilter(QObject* watched, QEvent* event) override;
};

} // namespace morvex
