#pragma once

#include "app/ui/models/LinkModel.h"
#include "platform/ports/Tray.h"

#include <QSystemTrayIcon>

#include <functional>
#include <optional>

namespace morvex {

/// The item in the desktop's tray; its picture shows whether the phone can reach this computer. Without a
/// tray it waits for one, however long that takes; if the tray goes and comes back, it gets the item again.
/// Main thread.
class TrayItem final : public QObject {
    Q_OBJECT

  public:
    /// `onPress` gets the place of the item on the screen, invalid if the tray does not tell it.
    TrayItem(const LinkModel& link, Tray& tray, std::function<void(const QRect& place)> onPress);

    /// Called once.
    void show();

  private:
    void appear();
    void pressed(QSystemTrayIcon::ActivationReason reason);
    void showAvailability();

    const LinkModel& link_;
    Tray& tray_;
    std::function<void(const QRect& place)> onPress_;
    QString shownSymbol_;
    std::optional<QSystemTrayIcon> icon_;
    Connection arrivals_;
};

} // namespace morvex
