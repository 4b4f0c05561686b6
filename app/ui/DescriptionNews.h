#pragma once

#include <QObject>
#include <QPointer>

class QQuickItem;
class QQuickWindow;

namespace morvex {

/// Tells screen readers when the description of the focused item changes, because Qt itself reports only
/// changed names. One for each window, which owns it. Main thread.
class DescriptionNews : public QObject {
    Q_OBJECT

  public:
    explicit DescriptionNews(QQuickWindow& window);

  private Q_SLOTS:
    void follow();
    void tell();

  private:
    QQuickWindow& window_;
    QPointer<QObject> followed_; ///< what `Accessible` attached to the item
};

} // namespace morvex
