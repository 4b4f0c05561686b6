#include "phone/Shell.h"

#include "foundation/Text.h"
#include "phone/SessionCommands.h"
#include "phone/SettingsCommands.h"
#include "shared/base/Try.h"
#include "shared/wire/Json.h"
#include "shared/wire/MacToolName.h"

#include <boost/json.hpp>

#include <algorithm>
#include <optional>
#include <utility>

namespace morvex {

namespace {

constexpr std::size_t summaryColumn = 22;

/// After these failures the rest of a script cannot reach the Mac.
bool endsScript(const Error& error) {
    const auto code = exitCodeOf(error);
    return code == ExitCode::macUnreachable || code == ExitCode::relayUnreachable ||
           code == ExitCode::interrupted;
}

std::unexpected<Error> wrongLine(std::string text) {
    return failWith(ExitCode::usage, std::move(text));
}

constexpr std::string_view blanks = " \t";

/// Removes the first word, which may be an empty one in quotes, from the front of `text` and returns it.
/// Nothing if there is none.
std::optional<std::string_view> takeWord(std::string_view& text) {
    text.remove_prefix(std::min(text.find_first_not_of(blanks), text.size()));
    if (text.empty()) return std::nullopt;
    const auto closing = text.starts_with('"') ? text.find('"', 1) : std::string_view::npos;
    const bool isQuoted = closing != std::string_view::npos;
    const auto end = isQuoted ? closing : std::min(text.find_first_of(blanks), text.size());
    const auto word = isQuoted ? text.substr(1, end - 1) : text.substr(0, end);
    text.remove_prefix(isQuoted ? end + 1 : end);
    return word;
}

} // namespace

struct Shell::Row {
    std::string_view name;
    std::string_view arguments;
    std::string_view summary;
    Work work;
};

const std::vector<Shell::Row>& Shell::rows() {
    static const std::vector<Row> rows{
        {"status", "", "co Mac právě umí a dělá", &Shell::status},
        {"tools", "", "nástroje Macu", &Shell::tools},
        {"call", "NAME [JSON]", "zavolá nástroj", &Shell::call},
        {"tasks", "", "úlohy agentů na Macu", &Shell::tasks},
        {"search", "TEXT", "najde soubory podle části názvu", &Shell::search},
        {"read", "PATH", "přečte soubor", &Shell::read},
        {"write", "PATH TEXT", "založí soubor (cesta s mezerami patří do uvozovek)", &Shell::write},
        {"notes", "ACTION …", "poznámky: list, create, edit, delete, sync (slova s mezerami do uvozovek)",
         &Shell::notes},
        {"summaries", "ACTION …", "souhrny: list, send", &Shell::summaries},
        {"approve", "yes|no", "odpoví na žádost o potvrzení", &Shell::approve},
        {"key", "", "předá Macu OpenAI klíč z dalšího řádku; '-' ho smaže", &Shell::key},
        {"preferences", Options::preferencesArguments, "jazyk, hlas a místa", &Shell::preferences},
        {"apps", Options::appsArguments, "vlastní aplikace; token je na dalším řádku", &Shell::apps},
        {"help", "", "tenhle přehled", &Shell::help},
        {"quit", "", "konec", &Shell::quit},
    };
    return rows;
}

SplitLine SplitLine::of(std::string_view line) {
    const auto text = trim(line);
    std::string_view rest = text;
    auto first = takeWord(rest).value_or("");
    return {std::string(first), trim(rest)};
}

std::vector<std::string> SplitLine::words(std::string_view line) {
    const auto text = trim(line);
    std::string_view rest = text;
    std::vector<std::string> words;
    while (auto word = takeWord(rest)) words.emplace_back(*word);
    return words;
}

Task<Result<void>> Shell::run() {
    CO_CHECK(co_await session_.untilReady(phone_.options.timeout, attendant_));
    if (phone_.keyboard.isInteractive()) phone_.terminal.note("Spojeno. Nápověda: help, konec: quit.");
    awaitLine();
    while (phone_.terminal.isOpen()) {
        auto event = co_await session_.next(std::nullopt);
        if (!event || std::holds_alternative<Inbox::EndOfInput>(*event)) break;
        const auto* line = std::get_if<Inbox::Line>(&*event);
        if (line) {
            phone_.lineArrived();
            if (!co_await take(line->text)) break;
            awaitLine();
        } else {
            co_await attendant_.heard(*std::move(event));
            if (!phone_.terminal.isPrompting()) awaitLine();
        }
    }
    phone_.terminal.leavePrompt();
    if (phone_.keyboard.isInteractive() || failure_ == ExitCode::done) co_return Result<void>{};
    co_return failWith(failure_, "Skript skončil s chybou.");
}

void Shell::awaitLine() {
    if (phone_.keyboard.isInteractive()) phone_.terminal.prompt("morvex> ");
    phone_.requestLine();
}

Task<bool> Shell::take(std::string line) {
    if (co_await attendant_.isAnswer(line)) co_return true;
    auto done = co_await carryOut(std::move(line));
    if (done) co_return !isOver_;
    phone_.terminal.problem(done.error().popis());
    const bool isLast = !phone_.keyboard.isInteractive() && endsScript(done.error());
    if (failure_ == ExitCode::done) failure_ = exitCodeOf(done.error());
    co_return !isLast;
}

Task<Result<void>> Shell::carryOut(std::string line) {
    auto [name, rest] = SplitLine::of(line);
    if (name.empty() || name.starts_with('#')) co_return Result<void>{};
    const auto row = std::ranges::find(rows(), name, &Row::name);
    if (row == rows().end()) co_return wrongLine("Příkaz '" + name + "' neznám. Zkus help.");
    const bool mayBeAlone = row->arguments.empty() || row->arguments.starts_with('[');
    const bool lacksArguments = rest.empty() && !mayBeAlone;
    if (lacksArguments)
        co_return wrongLine("Použití: " + std::string(row->name) + " " + std::string(row->arguments));
    co_return co_await (this->*row->work)(std::move(rest));
}

Task<Result<void>> Shell::status(std::string) {
    co_return co_await commands::status(phone_, session_, attendant_);
}

Task<Result<void>> Shell::tools(std::string) {
    co_return co_await commands::tools(phone_, session_, attendant_);
}

Task<Result<void>> Shell::call(std::string rest) {
    auto [name, arguments] = SplitLine::of(rest);
    co_return co_await commands::callTool(phone_, session_, attendant_, std::move(name),
                                          arguments.empty() ? "{}" : std::move(arguments));
}

Task<Result<void>> Shell::tasks(std::string) {
    co_return co_await commands::tasks(phone_, session_, attendant_);
}

Task<Result<void>> Shell::search(std::string rest) {
    boost::json::object arguments{{"pattern", rest}};
    co_return co_await commands::callTool(phone_, session_, attendant_, std::string(MacToolName::filesSearch),
                                          encode(arguments));
}

Task<Result<void>> Shell::read(std::string rest) {
    boost::json::object arguments{{"path", rest}};
    co_return co_await commands::callTool(phone_, session_, attendant_, std::string(MacToolName::filesRead),
                                          encode(arguments));
}

Task<Result<void>> Shell::write(std::string rest) {
    auto [path, content] = SplitLine::of(rest);
    boost::json::object arguments{{"path", path}, {"content", content}};
    co_return co_await commands::callTool(phone_, session_, attendant_, std::string(MacToolName::filesWrite),
                                          encode(arguments));
}

Task<Result<void>> Shell::notes(std::string rest) {
    return keep(commands::RecordKind::notes, std::move(rest));
}

Task<Result<void>> Shell::summaries(std::string rest) {
    return keep(commands::RecordKind::summaries, std::move(rest));
}

Task<Result<void>> Shell::keep(commands::RecordKind kind, std::string rest) {
    CO_TRY(auto, delivery, commands::keepRecords(phone_, kind, SplitLine::words(rest)));
    if (delivery) co_await attendant_.records().offer(*std::move(delivery));
    co_return Result<void>{};
}

Task<Result<void>> Shell::approve(std::string rest) {
    const auto decision = yesOrNo(rest);
    if (!decision) co_return wrongLine("Použití: approve yes|no");
    co_return co_await attendant_.decide(std::nullopt, *decision);
}

Task<Result<void>> Shell::key(std::string) {
    co_return co_await commands::key(phone_, session_, attendant_);
}

Task<Result<void>> Shell::preferences(std::string rest) {
    co_return co_await commands::preferences(phone_, session_, attendant_, SplitLine::words(rest));
}

Task<Result<void>> Shell::apps(std::string rest) {
    co_return co_await commands::apps(phone_, session_, attendant_, SplitLine::words(rest));
}

Task<Result<void>> Shell::help(std::string) {
    for (const auto& row : rows()) {
        auto left = "  " + std::string(row.name) + " " + std::string(row.arguments);
        left.resize(std::max(left.size() + 2, summaryColumn), ' ');
        phone_.terminal.print({{left, Style::strong}, {std::string(row.summary)}});
    }
    co_return Result<void>{};
}

Task<Result<void>> Shell::quit(std::string) {
    isOver_ = true;
    co_return Result<void>{};
}

} // namespace morvex
