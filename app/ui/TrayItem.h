#pragma once

#include "app/ui/models/LinkModel.h"

#include <QSystemTrayIcon>

#include <functional>

namespace morvex {

/// The item in the desktop's tray; its picture tells whether the phone can reach this computer. Where no tray
/// exists it waits for one. Main thread.
class TrayItem final : public QObject {
    Q_OBJECT

  public:
    /// `onPress` gets the place of the item on the screen, invalid where the tray keeps it to itself.
    TrayItem(const LinkModel& link, std::function<void(const QRect& place)> onPress);

    [[nodiscard]] static bool isThereATray() { return QSystemTrayIcon::isSystemTrayAvailable(); }

    void show();

  private:
    void showAvailability();

    const LinkModel& link_;
    QString shownSymbol_;
    QSystemTrayIcon icon_;
};

} // namespace morvex
