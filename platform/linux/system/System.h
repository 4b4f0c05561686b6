#pragma once

#include "platform/linux/DesktopNotifications.h"
#include "platform/linux/DesktopUrlOpener.h"
#include "platform/linux/DisplayServer.h"
#include "platform/linux/HostnamedName.h"
#include "platform/linux/LogindSleepInhibitor.h"
#include "platform/linux/LogindSleepMonitor.h"
#include "platform/linux/NetlinkMonitor.h"
#include "platform/linux/OrphanWatch.h"
#include "platform/linux/PortalColorScheme.h"
#include "platform/linux/StatusNotifierTray.h"
#include "platform/linux/SysfsPower.h"
#include "platform/linux/UPowerMonitor.h"
#include "platform/linux/VaultChoice.h"
#include "platform/linux/XdgAutostart.h"
#include "platform/linux/XdgFolders.h"
#include "platform/linux/evolution/EvolutionCalendarStore.h"
#include "platform/linux/evolution/EvolutionContactStore.h"
#include "platform/linux/evolution/EvolutionReminderStore.h"
#include "platform/linux/system/Basics.h"
#include "platform/net/AsioTlsClient.h"
#include "platform/net/BeastWebSocketClient.h"
#include "platform/net/CurlHttpClient.h"
#include "platform/posix/HostLocalTime.h"
#include "platform/posix/InodeBookmarks.h"
#include "platform/posix/JsonDefaults.h"
#include "platform/posix/OwnEnvironment.h"
#include "platform/posix/qt/UnixSignals.h"
#include "platform/qt/QtClipboard.h"
#include "platform/qt/QtFolderPicker.h"
#include "platform/qt/QtMainExecutor.h"
#include "platform/qt/XembedTray.h"

#include <memory>
#include <string>

namespace morvex {

// The adapters of this system under system-independent names, the only ones that the program's `main` uses.

/// Ends started programs that outlive this one.
using StartedPrograms = OrphanWatch;
/// Requests to end this program.
using EndSignals = UnixSignals;

/// The system services of a companion, with or without a window.
struct System {
    /// `records`: the executor on which settings are written. `executable`: the absolute path of this
    /// program, which is copied. The other arguments must outlive this object.
    System(Executor& main, Executor& records, Clock& clock, StartedPrograms& started,
           const std::string& executable)
        : defaults(folders.configuration(), {main, records, clock}),
          loginItem(folders.configuration(), executable),
          processes(&started),
          personalData(main, localTime) {}

    BeastWebSocketClient sockets;
    SystemRandom random;
    CurlHttpClient http;
    AsioTlsClient tls;
    XdgFolders folders;
    JsonDefaults defaults;
    VaultChoice vault{folders.applicationSupport()};
    InodeBookmarks bookmarks;
    SysfsPower kernelPower;
    UPowerMonitor power{kernelPower};
    LogindSleepMonitor sleep;
    NetlinkMonitor network;
    LogindSleepInhibitor inhibitor;
    XdgAutostart loginItem;
    SystemLauncher processes;
    DesktopUrlOpener opener;
    HostLocalTime localTime;
    EvolutionService personalData;
    EvolutionCalendarStore calendars{personalData};
    EvolutionReminderStore reminders{personalData};
    EvolutionContactStore contacts{personalData};
};

/// The additional services of a companion with a window.
struct Desktop {
    QtFolderPicker picker;
    QtClipboard clipboard;
    DesktopNotifications notifications;
    PortalColorScheme colors;
    XembedTray embedding;
    StatusNotifierTray tray{embedding};
};

/// The folder of the user's data.
inline std::string applicationSupport() {
    return XdgFolders().applicationSupport();
}

/// The computer's name as shown on the phone.
inline std::string computerName() {
    return HostnamedName().name();
}

} // namespace morvex
