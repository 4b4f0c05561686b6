#include "foundation/ProgramLog.h"
#include "foundation/ThreadExecutor.h"
#include "phone/Console.h"
#include "phone/Phone.h"
#include "platform/posix/base/Process.h"
#include "shared-apple/KeychainStore.h"
#include "shared/base/Try.h"

#include MORVEX_SYSTEM

#include <cstdlib>
#include <iostream>
#include <utility>

namespace {

using namespace morvex;

constexpr const char* service = "morvex-phone";

Terminal::Output outputTo(std::ostream& stream, int descriptor) {
    const char* noColour = std::getenv("NO_COLOR");
    const char* terminal = std::getenv("TERM");
    const bool isRead = isTerminal(descriptor);
    const bool isPlain = (noColour && *noColour) || !terminal || std::string_view(terminal) == "dumb";
    return {stream, isRead, isRead && !isPlain};
}

Task<void> drive(Phone& phone, Console& console, ExitCode& code) {
    code = co_await runCommand(phone);
    console.finish();
}

Result<ExitCode> run(const Options& options, Terminal& terminal) {
    // First, so that it goes last: clock and network post to it until their own threads have ended.
    ThreadExecutor executor("phone");
    TRY(const auto, clock, SystemClock::create());
    const ProgramLog log(standardError, *clock);
    std::stop_source interruption;
    Inbox inbox(*clock, interruption.get_token());
    TRY(auto, input, TerminalInput::create(standardInput));
    Console console(inbox, interruption, std::move(input));
    TRY(const auto, data, dataFolder(options));

    OnlyInstance instance(data);
    auto claim = instance.claim();
    if (!claim) return failWith(ExitCode::refused, claim.error().popis());
    if (*claim == OnlyInstance::Claim::heldByAnother)
        return failWith(ExitCode::refused, "S daty v " + data.string() + " už pracuje jiný morvex-phone.");
    PhoneSystem system(data);
    KeychainStore store(system.vault, service);
    PhoneSettings settings(system.vault, service);
    auto records = PhoneRecords::load(data, *clock, system.random);
    auto tasks = PhoneTasks::load(data);
    Phone phone{.options = options,
                .link = {.relay = {.executor = executor, .clock = *clock, .sockets = system.sockets},
                         .random = system.random},
                .http = system.http,
                .localTime = system.localTime,
                .store = store,
                .settings = settings,
                .records = records,
                .tasks = tasks,
                .inbox = inbox,
                .keyboard = console,
                .terminal = terminal};
    ExitCode code = ExitCode::done;
    TaskScope scope(executor);
    scope.spawn(drive(phone, console, code));
    console.run();
    executor.close();
    return code;
}

} // namespace

int main(int argumentCount, char** arguments) {
    surviveGoneReaders();
    Terminal terminal(outputTo(std::cout, standardOutput), outputTo(std::cerr, standardError));
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
