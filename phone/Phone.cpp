#include "phone/Phone.h"

#include "phone/PairCommands.h"
#include "phone/RecordCommands.h"
#include "phone/SessionCommands.h"
#include "phone/SettingsCommands.h"
#include "phone/Shell.h"
#include "shared/base/Try.h"

#include <algorithm>
#include <array>

namespace morvex {

namespace {

using Command = Options::Command;
using Shows = Attendant::Shows;

struct SessionCommand {
    Command command;
    Task<Result<void>> (*work)(Phone&, PhoneSession&, Attendant&);
    Shows shows = Shows::whatMatters;
};

Task<Result<void>> shell(Phone& phone, PhoneSession& session, Attendant& attendant) {
    Shell shell(phone, session, attendant);
    co_return co_await shell.run();
}

Task<Result<void>> preferences(Phone& phone, PhoneSession& session, Attendant& attendant) {
    co_return co_await commands::preferences(phone, session, attendant, phone.options.arguments);
}

Task<Result<void>> apps(Phone& phone, PhoneSession& session, Attendant& attendant) {
    co_return co_await commands::apps(phone, session, attendant, phone.options.arguments);
}

constexpr std::array<SessionCommand, 10> sessionCommands{{
    {Command::status, commands::status},
    {Command::tools, commands::tools},
    {Command::call, commands::call},
    {Command::tasks, commands::tasks},
    {Command::watch, commands::watch, Shows::everything},
    {Command::approve, commands::approve},
    {Command::key, commands::key},
    {Command::preferences, preferences},
    {Command::apps, apps},
    {Command::shell, shell},
}};

Task<Result<void>> inSession(Phone& phone, SessionCommand row) {
    CO_TRY(auto, paired, commands::loadPaired(phone.store));
    CO_TRY(auto, session,
           PhoneSession::create(std::move(paired.identita), std::move(paired.mac), phone.link, phone.inbox));
    Attendant attendant(phone, *session, row.shows);
    co_await session->start();
    auto ended = co_await row.work(phone, *session, attendant);
    auto kept = co_await attendant.records().finish();
    co_await session->stop();
    co_return ended ? kept : ended;
}

/// The change on the phone is kept even if it cannot be delivered to the Mac now.
Task<Result<void>> withRecords(Phone& phone, Command command, commands::RecordKind kind) {
    CO_TRY(auto, delivery, commands::keepRecords(phone, kind, phone.options.arguments));
    if (!delivery || phone.options.isOffline) co_return Result<void>{};
    auto delivered = co_await inSession(phone, {command, commands::synchronize});
    if (!delivered && !phone.records.unconfirmed().empty()) phone.noteKept();
    co_return delivered;
}

Task<Result<void>> chosen(Phone& phone) {
    auto command = phone.options.command;
    if (!command && phone.keyboard.isInteractive()) command = Command::shell;
    if (command == Command::pair) co_return co_await commands::pair(phone);
    if (command == Command::unpair) co_return co_await commands::unpair(phone);
    const auto& words = phone.options.arguments;
    if (command == Command::preferences && words.empty()) co_return commands::showPreferences(phone);
    if (command == Command::apps && words == std::vector<std::string>{"list"})
        co_return commands::showApps(phone);
    if (command == Command::notes)
        co_return co_await withRecords(phone, *command, commands::RecordKind::notes);
    if (command == Command::summaries)
        co_return co_await withRecords(phone, *command, commands::RecordKind::summaries);
    const auto* row = std::ranges::find(sessionCommands, command, &SessionCommand::command);
    if (row != sessionCommands.end()) co_return co_await inSession(phone, *row);
    co_return failWith(ExitCode::usage, "Chybí příkaz. Zkus morvex-phone --help.");
}

} // namespace

std::optional<std::string> plainAnswer(const Options& options) {
    if (options.command == Command::help) return Options::help();
    if (options.command == Command::version) return "morvex-phone " MORVEX_VERSION "\n";
    return std::nullopt;
}

Task<ExitCode> runCommand(Phone& phone) {
    auto ended = co_await chosen(phone);
    if (ended) co_return ExitCode::done;
    phone.terminal.problem(ended.error().popis());
    co_return exitCodeOf(ended.error());
}

} // namespace morvex
