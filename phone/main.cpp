#include "foundation/ProgramLog.h"
#include "foundation/ThreadExecutor.h"
#include "phone/Console.h"
#include "phone/Phone.h"
#include "platform/linux/BoottimeClock.h"
#include "platform/linux/FileVault.h"
#include "platform/linux/LockFileInstance.h"
#include "platform/linux/SystemRandom.h"
#include "platform/net/BeastWebSocketClient.h"
#include "platform/net/CurlHttpClient.h"
#include "shared-apple/KeychainStore.h"
#include "shared/base/Try.h"

#include <csignal>
#include <cstdlib>
#include <iostream>
#include <unistd.h>
#include <utility>

namespace {

using namespace morvex;

constexpr const char* service = "morvex-phone";

Terminal::Output outputTo(std::ostream& stream, int descriptor) {
    const char* noColour = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    const bool isTerminal = ::isatty(descriptor) != 0;
    const bool isPlain = (noColour && *noColour) || !terminal || std::string_view(terminal) == "dumb";
    return {stream, isTerminal, isTerminal && !isPlain};
}

Task<void> drive(Phone& phone, Console& console, ExitCode& code) {
    code = co_await runCommand(phone);
    console.finish();
}

Result<ExitCode> run(const Options& options, Terminal& terminal) {
    // First, so that it goes last: clock and network post to it until their own threads have ended.
    ThreadExecutor executor("phone");
    TRY(const auto, clock, BoottimeClock::create());
    const ProgramLog log(STDERR_FILENO, *clock);
    std::stop_source interruption;
    Inbox inbox(*clock, interruption.get_token());
    TRY(const auto, console, Console::create(inbox, interruption, STDIN_FILENO));
    TRY(const auto, data, dataFolder(options));

    LockFileInstance instance(data);
    auto claim = instance.claim();
    if (!claim) return failWith(ExitCode::refused, claim.error().popis());
    if (*claim == LockFileInstance::Claim::heldByAnother)
        return failWith(ExitCode::refused, "S daty v " + data.string() + " už pracuje jiný morvex-phone.");
    FileVault vault(data);
    KeychainStore store(vault, service);
    PhoneSettings settings(vault, service);
    SystemRandom random;
    auto records = PhoneRecords::load(data, *clock, random);
    auto tasks = PhoneTasks::load(data);
    CurlHttpClient http;
    BeastWebSocketClient sockets;
    Phone phone{options,  {{executor, *clock, sockets}, random},
                http,     store,
                settings, records,
                tasks,    inbox,
                *console, terminal};
    ExitCode code = ExitCode::done;
    TaskScope scope(executor);
    scope.spawn(drive(phone, *console, code));
    console->run();
    executor.close();
    return code;
}

} // namespace

int main(int argumentCount, char** arguments) {
    std::signal(SIGPIPE, SIG_IGN);
    Terminal terminal(outputTo(std::cout, STDOUT_FILENO), outputTo(std::cerr, STDERR_FILENO));
    auto options = Options::parse(std::span<const char* const>{arguments + 1, arguments + argumentCount});
    if (options)
        if (auto answer = plainAnswer(*options)) {
            std::cout << *answer;
            return EXIT_SUCCESS;
        }
    auto ended = options ? run(*options, terminal) : Result<ExitCode>(fail(options.error()));
    if (ended) return static_cast<int>(*ended);
    terminal.problem(ended.error().popis());
    return static_cast<int>(exitCodeOf(ended.error()));
}
