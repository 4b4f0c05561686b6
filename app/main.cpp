#include "app/assembly/Features.h"
#include "app/console/ConsoleFolderPicker.h"
#include "app/console/ConsoleShell.h"
#include "app/organizer/NominatimSearch.h"
#include "app/ui/StartTrouble.h"
#include "app/ui/TolvyCompanionApp.h"
#include "foundation/ProgramLog.h"
#include "foundation/TaskScope.h"
#include "foundation/Text.h"
#include "foundation/ThreadExecutor.h"
#include "platform/posix/HostLocalTime.h"
#include "platform/posix/TypingEcho.h"
#include "platform/posix/base/Kernel.h"
#include "platform/posix/base/LogQueue.h"
#include "platform/posix/base/Process.h"
#include "platform/posix/qt/LineReader.h"
#include "shared-apple/KeychainStore.h"

#include MORVEX_SYSTEM

#include <QApplication>
#include <QQuickWindow>

#include <chrono>
#include <cstdio>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

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
struct Runtime {
    Runtime(std::unique_ptr<Clock> given, StartedPrograms& started)
        : clock(std::move(given)),
          system(main, records, *clock, started, QCoreApplication::applicationFilePath().toStdString()) {}

    QtMainExecutor main;
    ThreadExecutor storage{"uloziste"};
    ThreadExecutor records{"zapis"};
    ThreadExecutor workers{"pracovnik", 2};
    std::unique_ptr<Clock> clock;
    ProgramLog log{standardError, *clock};
    System system;
    KeychainStore uloziste{system.vault, "zz.bramwicks.tolvy"};
    NominatimSearch places{system.http, "https://nominatim.openstreetmap.org", MORVEX_VERSION};

    CompanionServices services(FolderPicker& picker) {
        return {.main = main,
                .vaultThread = storage,
                .recordsThread = records,
                .workers = workers,
                .link = {.relay = {.executor = system.sockets.executor(),
                                   .clock = *clock,
                                   .sockets = system.sockets},
                         .random = system.random},
                .http = system.http,
                .tls = system.tls,
                .uloziste = uloziste,
                .vault = system.vault,
                .defaults = system.defaults,
                .bookmarks = system.bookmarks,
                .folderPicker = picker,
                .folders = system.folders,
                .power = system.power,
                .sleep = system.sleep,
                .network = system.network,
                .inhibitor = system.inhibitor,
                .loginItem = system.loginItem,
                .processes = system.processes,
                .opener = system.opener,
                .calendars = system.calendars,
                .reminders = system.reminders,
                .contacts = system.contacts,
                .places = places,
                .localTime = system.localTime,
                .environment = ownEnvironment(),
                .jmenoZarizeni = computerName(),
                .verzeAplikace = version,
                .openAI = "https://api.openai.com",
                .osascript = "/usr/bin/osascript"};
    }
};

enum class Face { window, console };

/// Tells what keeps the program from starting, in a window too where there is a display.
int giveUp(Face face, const std::string& words) {
    std::fprintf(stderr, "%s\n", words.c_str());
    if (face == Face::window) showStartTrouble(words);
    return 1;
}

Result<OnlyInstance::Claim> claimData(OnlyInstance& instance, const Clock& clock) {
    const ProgramLog log(standardError, clock);
    return instance.claim();
}

/// The companion, and what runs on its behalf until it has ended.
struct Running {
    /// `complain` tells a person who has left already.
    Running(Runtime& around, FolderPicker& picker, Print complain)
        : defaults(around.system.defaults),
          complain(std::move(complain)),
          companion(around.services(picker)),
          features(companion),
          commands(around.main),
          ending(around.main) {}

    /// Any number of times: another signal may come until the main loop has ended.
    void quit() {
        if (!std::exchange(isEnding, true)) ending.spawn(endThenQuit());
    }

    Task<void> endThenQuit() {
        co_await companion.shutDown();
        commands.stop();
        co_await commands.join();
        co_await defaults.shutDown();
        std::vector<std::string> unsaved;
        for (const auto& problem : {companion.stav().vaultTrouble.value(), defaults.unsavedProblem()})
            if (problem) unsaved.push_back(problem->czech());
        if (!unsaved.empty()) complain(join(unsaved, "\n"));
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

    decltype(System::defaults)& defaults;
    Print complain;
    Companion companion;
    Features features;
    TaskScope commands;
    TaskScope ending;
    bool isEnding = false;
};

int runConsole(Runtime& around, const Print& print) {
    ConsoleFolderPicker picker;
    Running running(around, picker, print);
    auto quit = [&running] { running.quit(); };
    TypingEcho echo(standardInput);
    auto setTyping = [&echo](ConsoleQuestions::Typing typing) {
        typing == ConsoleQuestions::Typing::shown ? echo.show() : echo.hide();
    };
    ConsoleShell shell(running.companion, running.features,
                       {*around.clock, picker, around.system.folders, running.commands, print, quit,
                        setTyping, isTerminal(standardOutput)});
    std::optional<LineReader> reader;
    bool isListening = false;
    auto listen = [&] {
        if (std::exchange(isListening, true)) return;
        shell.greet(version);
        if (LineReader::hasInput(standardInput))
            reader.emplace(standardInput, [&shell](const std::string& line) { shell.handle(line); });
    };
    EndSignals signals(quit);
    if (auto problem = around.system.defaults.problem()) print(problem->czech());
    running.commands.spawn(running.startThen(listen));
    running.commands.spawn(running.afterPatience(*around.clock, listen));
    return QCoreApplication::exec();
}

int runWindow(Runtime& around, OnlyInstance& instance, const Print& print) {
    Desktop desktop;
    Running running(around, desktop.picker, [&desktop, &print](const std::string& problem) {
        print(problem);
        desktop.notifications.show({"Morvex", problem, {}, {}});
    });
    auto quit = [&] {
        desktop.picker.close();
        running.quit();
    };
    TolvyCompanionApp window(running.companion, running.features,
                             {*around.clock, running.commands, desktop.clipboard, desktop.notifications,
                              desktop.colors, desktop.tray, version, quit, kernel::releaseMemory});
    EndSignals signals(quit);
    if (auto problem = around.system.defaults.problem()) print(problem->czech());
    instance.onCall([&window] { window.openMainWindow(); });
    window.start();
    running.commands.spawn(running.companion.spustit());
    return QCoreApplication::exec();
}

int run(Face face, StartedPrograms& started) {
    auto clock = SystemClock::create();
    if (!clock) return giveUp(face, "Morvex nemá hodiny: " + clock.error().popis().czech());
    OnlyInstance instance(applicationSupport());
    const auto claim = claimData(instance, **clock);
    if (!claim) return giveUp(face, claim.error().popis().czech());
    if (*claim == OnlyInstance::Claim::heldByAnother) {
        if (face == Face::window && instance.callOther()) return 0;
        return giveUp(face, "Morvex už nad těmito daty běží.");
    }
    // A reader that stops must not stop the program.
    LogQueue output(standardOutput, {.longest = longestPrint, .lost = " řádků výpisu se ztratilo."});
    const Print print = [&output](const std::string& text) { output.write(text); };
    Runtime around(*std::move(clock), started);
    return face == Face::window ? runWindow(around, instance, print) : runConsole(around, print);
}

/// With an application of the toolkit, so that there may be a window.
int runWatched(Face face, Result<StartedPrograms>& started) {
    if (started) return run(face, *started);
    if (const auto clock = SystemClock::create()) {
        const ProgramLog log(standardError, **clock);
        logCause("watching started programs", started.error());
    }
    return giveUp(face, "Morvex nemůže hlídat programy, které spustí: " + started.error().popis().czech());
}

int runWith(Face face, int argc, char** argv) {
    auto started = StartedPrograms::create();
    if (face == Face::console) {
        QCoreApplication application(argc, argv);
        return runWatched(face, started);
    }
    QApplication application(argc, argv);
    // A few cards need no graphics card, and without one the program starts faster and stays smaller.
    QQuickWindow::setGraphicsApi(QSGRendererInterface::Software);
    return runWatched(face, started);
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
    morvex::hearOfChildren();
    morvex::surviveGoneReaders();
    using enum morvex::Face;
    return morvex::runWith(wantsConsole || !morvex::isThereADisplay() ? console : window, argc, argv);
}
