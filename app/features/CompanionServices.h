#pragma once

#include "platform/ports/CalendarStore.h"
#include "platform/ports/ContactStore.h"
#include "platform/ports/FolderBookmarks.h"
#include "platform/ports/FolderPicker.h"
#include "platform/ports/HttpClient.h"
#include "platform/ports/LocalTime.h"
#include "platform/ports/LoginItem.h"
#include "platform/ports/NetworkMonitor.h"
#include "platform/ports/PlaceSearch.h"
#include "platform/ports/PowerMonitor.h"
#include "platform/ports/ProcessLauncher.h"
#include "platform/ports/ReminderStore.h"
#include "platform/ports/SecretVault.h"
#include "platform/ports/SleepInhibitor.h"
#include "platform/ports/SleepMonitor.h"
#include "platform/ports/StandardFolders.h"
#include "platform/ports/TlsClient.h"
#include "platform/ports/UrlOpener.h"
#include "platform/ports/UserDefaults.h"
#include "shared-apple/IdentityStore.h"
#include "shared-apple/SecureLink.h"

#include <string>

namespace morvex {

/// What the companion gets from outside. All references outlive the companion.
struct CompanionServices {
    Executor& main;
    Executor& vaultThread;   ///< serial; for identity store and vault, whose calls may block
    Executor& recordsThread; ///< serial; the stores write their files on it
    Executor& workers;       ///< for file work, which may block
    SecureLink::Services link;
    HttpClient& http;
    TlsClient& tls;
    IdentityStore& uloziste;
    SecretVault& vault;
    UserDefaults& defaults;
    FolderBookmarks& bookmarks;
    FolderPicker& folderPicker;
    StandardFolders& folders;
    PowerMonitor& power;
    SleepMonitor& sleep;
    NetworkMonitor& network;
    SleepInhibitor& inhibitor;
    LoginItem& loginItem;
    ProcessLauncher& processes;
    UrlOpener& opener;
    CalendarStore& calendars;
    ReminderStore& reminders;
    ContactStore& contacts;
    PlaceSearch& places;
    LocalTime& localTime;

    Environment environment;   ///< that of this program
    std::string jmenoZarizeni; ///< name of this computer, shown on the phone
    std::string verzeAplikace; ///< "x.y.z (build)"
    std::string openAI;        ///< address of the OpenAI API, without a slash at its end
    std::string osascript;     ///< path of the program that runs scripts for Apple Mail; it need not exist

    [[nodiscard]] Clock& clock() const { return link.relay.clock; }
};

} // namespace morvex
