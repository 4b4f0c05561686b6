#pragma once

#include "app/features/CompanionServices.h"
#include "platform/memory/FakeCalendarStore.h"
#include "platform/memory/FakeContactStore.h"
#include "platform/memory/FakeFolderPicker.h"
#include "platform/memory/FakeLoginItem.h"
#include "platform/memory/FakeNetworkMonitor.h"
#include "platform/memory/FakePlaceSearch.h"
#include "platform/memory/FakePower.h"
#include "platform/memory/FakeReminderStore.h"
#include "platform/memory/FakeSleepInhibitor.h"
#include "platform/memory/FakeSleepMonitor.h"
#include "platform/memory/FixedFolders.h"
#include "platform/memory/FixedLocalTime.h"
#include "platform/memory/MemoryBookmarks.h"
#include "platform/memory/MemoryDefaults.h"
#include "platform/memory/MemoryVault.h"
#include "platform/memory/ScriptedPrograms.h"
#include "platform/memory/ScriptedTls.h"
#include "platform/memory/ScriptedUrlOpener.h"

#include <string>
#include <utility>

namespace morvex {

/// The surroundings of a companion on a computer, except network, time and threads, as fakes. Must outlive
/// the companion.
struct FakeDesktop {
    struct Executors {
        Executor& main;
        Executor& storage;
        Executor& records;
        Executor& workers;
    };

    MemoryVault vault;
    MemoryDefaults defaults;
    MemoryBookmarks bookmarks;
    FakeFolderPicker picker;
    /// The picker that the companion uses; a test may replace it before the start.
    FolderPicker* askedPicker = &picker;
    FixedFolders folders;
    FakePower power;
    FakeSleepMonitor sleep;
    FakeNetworkMonitor network;
    FakeSleepInhibitor inhibitor;
    FakeLoginItem loginItem;
    ScriptedPrograms programs;
    ScriptedUrlOpener opener;
    ScriptedTls tls;
    FakeCalendarStore calendars;
    FakeReminderStore reminders;
    FakeContactStore contacts;
    FakePlaceSearch places;
    FixedLocalTime localTime;
    std::string osascript = "/nonexistent/osascript"; ///< a test may put another one there before the start

    CompanionServices services(Executors executors, SecureLink::Services link, HttpClient& http,
                               IdentityStore& store, Environment environment = {},
                               std::string version = "1.0 (1)") {
        return {.main = executors.main,
                .vaultThread = executors.storage,
                .recordsThread = executors.records,
                .workers = executors.workers,
                .link = link,
                .http = http,
                .tls = tls,
                .uloziste = store,
                .vault = vault,
                .defaults = defaults,
                .bookmarks = bookmarks,
                .folderPicker = *askedPicker,
                .folders = folders,
                .power = power,
                .sleep = sleep,
                .network = network,
                .inhibitor = inhibitor,
                .loginItem = loginItem,
                .processes = programs,
                .opener = opener,
                .calendars = calendars,
                .reminders = reminders,
                .contacts = contacts,
                .places = places,
                .localTime = localTime,
                .environment = std::move(environment),
                .jmenoZarizeni = "Počítač",
                .verzeAplikace = std::move(version),
                .openAI = "https://api.openai.example",
                .osascript = osascript};
    }
};

} // namespace morvex
