#pragma once

#include "app/ui/models/LinkModel.h"
#include "platform/ports/Tray.h"

#include <QSystemTrayIcon>

#include <functional>
#include <optional>

namespace morvex {

/// The item in the desktop's tray; its picture tells whether the phone can reach this computer. Where there
/// is no tray it waits for one, as long as it takes, and a tray that has gone gets the item again when it
/// comes back. Main thread.
class TrayItem final : public QObject {
    Q_OBJECT

  public:
    /// `onPress` gets the place of the item on the screen, invalid where the tray keeps it to itself.
    TrayItem(const LinkModel& link, Tray& tray, std::function<void(const QRect& place)> onPress);
    ~TrayItem() override;

    /// Once.
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
};

} // namespace morvex
