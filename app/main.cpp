#include "app/assembly/Features.h"
#include "app/console/ConsoleFolderPicker.h"
#include "app/console/ConsoleShell.h"
#include "app/console/LineReader.h"
#include "app/ui/StartTrouble.h"
#include "app/ui/TolvyCompanionApp.h"
#include "foundation/ProgramLog.h"
#include "foundation/ThreadExecutor.h"
#include "platform/linux/BoottimeClock.h"
#include "platform/linux/DesktopNotifications.h"
#include "platform/linux/DesktopUrlOpener.h"
#include "platform/linux/DisplayServer.h"
#include "platform/linux/HostnamedName.h"
#include "platform/linux/InodeBookmarks.h"
#include "platform/linux/JsonDefaults.h"
#include "platform/linux/LockFileInstance.h"
#include "platform/linux/LogindSleepInhibitor.h"
#include "platform/linux/LogindSleepMonitor.h"
#include "platform/linux/NetlinkMonitor.h"
#include "platform/linux/OrphanWatch.h"
#include "platform/linux/OwnEnvironment.h"
#include "platform/linux/PortalColorScheme.h"
#include "platform/linux/SpawnLauncher.h"
#include "platform/linux/StatusNotifierTray.h"
#include "platform/linux/SysfsPower.h"
#include "platform/linux/SystemRandom.h"
#include "platform/linux/UPowerMonitor.h"
#include "platform/linux/VaultChoice.h"
#include "platform/linux/XdgAutostart.h"
#include "platform/linux/XdgFolders.h"
#include "platform/net/BeastWebSocketClient.h"
#include "platform/net/CurlHttpClient.h"
#include "platform/qt/QtClipboard.h"
#include "platform/qt/QtFolderPicker.h"
#include "platform/qt/QtMainExecutor.h"
#include "platform/qt/UnixSignals.h"
#include "platform/qt/XembedTray.h"
#include "shared-apple/KeychainStore.h"
#include "shared/base/LogQueue.h"

#include <QApplication>
#include <QQuickWindow>

#include <chrono>
#include <csignal>
#include <cstdio>
#include <functional>
#include <malloc.h>
#include <memory>
#include <optional>
#include <string_view>
#include <unistd.h>
#include <utility>

namespace morvex {
namespace {

constexpr const char* version = MORVEX_VERSION " (" MORVEX_BUILD ")";

constexpr const char* help =
    R"(morvex: dává telefonu bezpečný přístup k tomuto počítači.

Běží, dokud ho neukončíš. Na ploše má okno a ikonu v oznamovací oblasti. Bez obrazovky spojení,
párování a povolené složky ovládáš příkazy na jeho vstupu, seznam ukáže příkaz „pomoc“.
Původní slova systému k chybám píše na chybový výstup.

  --console   bez okna, i když je tu obrazovka
  --help      tento text
  --version   verze programu
)";

using Print = std::function<void(const std::string&)>;

/// Far beyond what a command prints at once.
constexpr std::size_t longestPrint = 256 * 1024;

/// Everything that the companion works with. The executors go last: whatever still hops there finds them.
struct System {
    System(std::unique_ptr<Clock> given, OrphanWatch& orphans)
        : clock(std::move(given)), processes(&orphans) {}

    QtMainExecutor main;
    ThreadExecutor storage{"uloziste"};
    ThreadExecutor records{"zapis"};
    ThreadExecutor workers{"pracovnik", 2};
    BeastWebSocketClient sockets;
    std::unique_ptr<Clock> clock;
    ProgramLog log{STDERR_FILENO, *clock};
    SystemRandom random;
    CurlHttpClient http;
    XdgFolders folders;
    JsonDefaults defaults{folders.configuration(), {main, records, *clock}};
    VaultChoice vault{folders.applicationSupport()};
    KeychainStore uloziste{vault, "zz.bramwicks.tolvy"};
    InodeBookmarks bookmarks;
    SysfsPower kernelPower;
    UPowerMonitor power{kernelPower};
    LogindSleepMonitor sleep;
    NetlinkMonitor network;
    LogindSleepInhibitor inhibitor;
    XdgAutostart loginItem{folders.configuration(), QCoreApplication::applicationFilePath().toStdString()};
    SpawnLauncher processes;
    DesktopUrlOpener opener;

    CompanionServices services(FolderPicker& picker) {
        return {main,
                storage,
                records,
                workers,
                {{sockets.executor(), *clock, sockets}, random},
                http,
                uloziste,
                vault,
                defaults,
                bookmarks,
                picker,
                folders,
                power,
                sleep,
                network,
                inhibitor,
                loginItem,
                processes,
                opener,
                ownEnvironment(),
                HostnamedName().name(),
                version};
    }
};

enum class Face { window, console };

/// Tells what keeps the program from starting, in a window too where there is a display.
int giveUp(Face face, const std::string& words) {
    std::fprintf(stderr, "%s\n", words.c_str());
    if (face == Face::window) showStartTrouble(words);
    return 1;
}

Result<LockFileInstance::Claim> claimData(LockFileInstance& instance, const Clock& clock) {
    const ProgramLog log(STDERR_FILENO, clock);
    return instance.claim();
}

/// The companion, and what runs on its behalf until it has ended.
struct Running {
    /// `complain` tells a person who has left already.
    Running(System& system, FolderPicker& picker, Print complain)
        : defaults(system.defaults),
          complain(std::move(complain)),
          companion(system.services(picker)),
          features(companion),
          commands(system.main),
          ending(system.main) {}

    /// Any number of times: another signal may come until the main loop has ended.
    void quit() {
        if (!std::exchange(isEnding, true)) ending.spawn(endThenQuit());
    }

    Task<void> endThenQuit() {
        co_await companion.ukoncit();
        commands.stop();
        co_await commands.join();
        co_await defaults.ukoncit();
        if (const auto& problem = defaults.unsavedProblem()) complain(*problem);
        QCoreApplication::quit();
    }

    /// Commands find the keys of this computer there, unless a keyring lets them wait.
    Task<void> startThen(std::function<void()> next) {
        co_await companion.spustit();
        if (!isEnding) next();
    }

    Task<void> afterPatience(Clock& clock, std::function<void()> next) {
        constexpr std::chrono::seconds patience{3};
        if (co_await sleepFor(clock, patience, commands.token())) next();
    }

    JsonDefaults& defaults;
    Print complain;
    Companion companion;
    Features features;
    TaskScope commands;
    TaskScope ending;
    bool isEnding = false;
};

int runConsole(System& system, const Print& print) {
    ConsoleFolderPicker picker;
    Running running(system, picker, print);
    auto quit = [&running] { running.quit(); };
    ConsoleShell shell(
        running.companion, running.features,
        {*system.clock, picker, system.folders, running.commands, print, quit, ::isatty(STDOUT_FILENO) != 0});
    std::optional<LineReader> reader;
    bool isListening = false;
    auto listen = [&] {
        if (std::exchange(isListening, true)) return;
        shell.greet(version);
        if (LineReader::hasInput(STDIN_FILENO))
            reader.emplace(STDIN_FILENO, [&shell](const std::string& line) { shell.handle(line); });
    };
    UnixSignals signals({SIGINT, SIGTERM, SIGHUP}, quit);
    if (auto problem = system.defaults.problem()) print(*problem);
    running.commands.spawn(running.startThen(listen));
    running.commands.spawn(running.afterPatience(*system.clock, listen));
    return QCoreApplication::exec();
}

int runWindow(System& system, LockFileInstance& instance, const Print& print) {
    QtFolderPicker picker;
    QtClipboard clipboard;
    DesktopNotifications notifications;
    PortalColorScheme colors;
    XembedTray embedding;
    StatusNotifierTray tray(embedding);
    Running running(system, picker, [&notifications, &print](const std::string& problem) {
        print(problem);
        notifications.show({"Morvex", problem, {}, {}});
    });
    auto quit = [&] {
        picker.close();
        running.quit();
    };
    TolvyCompanionApp window(running.companion, running.features,
                             {*system.clock, running.commands, clipboard, notifications, colors, tray,
                              version, quit, [] { ::malloc_trim(0); }});
    UnixSignals signals({SIGINT, SIGTERM, SIGHUP}, quit);
    if (auto problem = system.defaults.problem()) print(*problem);
    instance.onCall([&window] { window.openMainWindow(); });
    window.start();
    running.commands.spawn(running.companion.spustit());
    return QCoreApplication::exec();
}

int run(Face face, OrphanWatch& orphans) {
    auto clock = BoottimeClock::create();
    if (!clock) return giveUp(face, "Morvex nemá hodiny: " + clock.error().popis());
    LockFileInstance instance(XdgFolders().applicationSupport());
    const auto claim = claimData(instance, **clock);
    if (!claim) return giveUp(face, claim.error().popis());
    if (*claim == LockFileInstance::Claim::heldByAnother) {
        if (face == Face::window && instance.callOther()) return 0;
        return giveUp(face, "Morvex už nad těmito daty běží.");
    }
    // A reader that stops must not stop the program.
    LogQueue output(STDOUT_FILENO, {.longest = longestPrint, .lost = " řádků výpisu se ztratilo."});
    const Print print = [&output](const std::string& text) { output.write(text); };
    System system(*std::move(clock), orphans);
    return face == Face::window ? runWindow(system, instance, print) : runConsole(system, print);
}

/// With an application of the toolkit, so that there may be a window.
int runWatched(Face face, Result<OrphanWatch>& orphans) {
    if (orphans) return run(face, *orphans);
    if (const auto clock = BoottimeClock::create()) {
        const ProgramLog log(STDERR_FILENO, **clock);
        logCause("watching started programs", orphans.error());
    }
    return giveUp(face, "Morvex nemůže hlídat programy, které spustí: " + orphans.error().popis());
}

int runWith(Face face, int argc, char** argv) {
    auto orphans = OrphanWatch::create();
    if (face == Face::console) {
        QCoreApplication application(argc, argv);
        return runWatched(face, orphans);
    }
    QApplication application(argc, argv);
    // A few cards need no graphics card, and without one the program starts faster and stays smaller.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    return runWatched(face, orphans);
}

} // namespace
} // namespace morvex

int main(int argc, char** argv) {
    if (argc == 2 && std::string_view(argv[1]) == "--help") {
        std::fputs(morvex::help, stdout);
        return 0;
    }
    if (argc == 2 && std::string_view(argv[1]) == "--version") {
        std::puts(morvex::version);
        return 0;
    }
    const bool wantsConsole = argc == 2 && std::string_view(argv[1]) == "--console";
    if (argc > 1 && !wantsConsole) {
        std::fputs(morvex::help, stderr);
        return 2;
    }
    // Whoever starts this program may ignore this signal; then no end of a child would be known.
    std::signal(SIGCHLD, SIG_DFL);
    // A reader that goes away is noticed by the failed write.
    std::signal(SIGPIPE, SIG_IGN);
    using enum morvex::Face;
    return morvex::runWith(wantsConsole || !morvex::isThereADisplay() ? console : window, argc, argv);
}
