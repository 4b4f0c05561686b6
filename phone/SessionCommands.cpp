#include "phone/SessionCommands.h"

#include "phone/ResultText.h"
#include "phone/StatusText.h"
#include "phone/TaskText.h"
#include "shared/base/Try.h"
#include "shared/wire/Json.h"
#include "shared/wire/MacToolName.h"

#include <boost/json.hpp>

#include <chrono>
#include <utility>

namespace morvex::commands {

namespace {

constexpr std::size_t longestInput = 1'048'576;

/// How long to wait for a request of the Mac.
constexpr std::chrono::minutes patience{10};

/// The result of a wait that has no goal: a failure only if the relay refused.
Result<void> afterWaiting(const PhoneSession& session) {
    if (auto refusal = session.refusal()) return fail(*refusal);
    return {};
}

/// Reads the whole input. The session continues meanwhile.
Task<Result<std::string>> readInput(Phone& phone, PhoneSession& session, Attendant& attendant) {
    std::string text;
    phone.requestLine();
    while (auto event = co_await session.next(std::nullopt)) {
        if (std::holds_alternative<Inbox::EndOfInput>(*event)) co_return text;
        const auto* line = std::get_if<Inbox::Line>(&*event);
        if (!line) {
            co_await attendant.heard(*std::move(event));
            continue;
        }
        text.append(line->text).append("\n");
        if (text.size() > longestInput) co_return failWith(ExitCode::usage, "Vstup je moc dlouhý.");
        phone.requestLine();
    }
    co_return fail(userInterrupted());
}

} // namespace

Task<Result<void>> status(Phone& phone, PhoneSession& session, Attendant& attendant) {
    CO_TRY(auto, status, co_await session.status(phone.options.timeout, attendant));
    if (phone.options.isJson)
        phone.terminal.printJson(encode(status));
    else
        phone.terminal.print(statusLines(status, phone.now(), phone.zone()));
    co_return Result<void>{};
}

Task<Result<void>> tools(Phone& phone, PhoneSession& session, Attendant& attendant) {
    CO_TRY(auto, status, co_await session.status(phone.options.timeout, attendant));
    if (phone.options.isJson)
        phone.terminal.printJson(toolsJson(status.tools));
    else
        phone.terminal.print(toolLines(status.tools));
    co_return Result<void>{};
}

Task<Result<void>> call(Phone& phone, PhoneSession& session, Attendant& attendant) {
    const auto& given = phone.options.arguments;
    Result<std::string> arguments = given.size() > 1 ? given[1] : "{}";
    if (*arguments == "-") arguments = co_await readInput(phone, session, attendant);
    if (!arguments) co_return fail(arguments.error());
    co_return co_await callTool(phone, session, attendant, given.front(), *std::move(arguments));
}

Task<Result<void>> callTool(Phone& phone, PhoneSession& session, Attendant& attendant, std::string name,
                            std::string argumentsJSON) {
    auto parsed = parseJson(argumentsJSON);
    if (!parsed || !parsed->is_object())
        co_return failWith(ExitCode::usage,
                           "Argumenty nástroje mají být objekt JSON, třeba {\"path\":\"a.txt\"}.");
    attendant.calling(name);
    auto answered = co_await session.call(std::move(name), encode(*parsed), phone.options.timeout, attendant);
    attendant.settled();
    CO_TRY(auto, result, std::move(answered));
    if (phone.options.isJson)
        phone.terminal.printJson(resultJson(result.json));
    else
        phone.terminal.print(resultLines(result.json));
    if (result.ok) co_return Result<void>{};
    auto sentence = errorSentence(result.json);
    co_return failWith(ExitCode::refused, sentence.empty() ? "Nástroj skončil neúspěchem." : sentence);
}

Task<Result<void>> tasks(Phone& phone, PhoneSession& session, Attendant& attendant) {
    // The Mac answers the call after it has reported everything that this phone missed. If the answer fails,
    // the reports received so far are shown.
    auto answered =
        co_await session.call(std::string(MacToolName::status), "{}", phone.options.timeout, attendant);
    const auto& items = phone.tasks.items();
    if (phone.options.isJson) phone.terminal.printJson(encode(items));
    if (answered && !phone.options.isJson && items.empty()) phone.terminal.note("Mac o žádné úloze neřekl.");
    for (const auto& item : items)
        if (!phone.options.isJson) phone.terminal.print(taskLines(item));
    CO_CHECK(std::move(answered));
    co_return Result<void>{};
}

Task<Result<void>> watch(Phone& phone, PhoneSession& session, Attendant& attendant) {
    while (phone.terminal.isOpen() && !session.refusal()) {
        auto event = co_await session.next(std::nullopt);
        if (!event) break;
        co_await attendant.heard(*std::move(event));
    }
    co_return afterWaiting(session);
}

Task<Result<void>> approve(Phone& phone, PhoneSession& session, Attendant& attendant) {
    const auto& given = phone.options.arguments;
    const auto decision = given.empty() ? std::nullopt : yesOrNo(given[1]);
    const bool isUsable = given.empty() ? attendant.decides() : decision.has_value();
    if (!isUsable)
        co_return failWith(ExitCode::usage,
                           "Použití: morvex-phone approve ID yes|no. Bez ID jen na terminálu.");
    CO_CHECK(co_await session.untilReady(phone.options.timeout, attendant));
    if (decision) co_return co_await attendant.decide(given[0], *decision);

    phone.terminal.note("Čekám na žádost o potvrzení…");
    const auto deadline = phone.deadline(patience);
    while (!attendant.hasDecided() && !session.refusal()) {
        auto event = co_await session.next(deadline);
        if (!event && phone.inbox.isInterrupted()) co_return fail(userInterrupted());
        if (!event) co_return failWith(ExitCode::refused, "Žádná žádost nepřišla.");
        co_await attendant.heard(*std::move(event));
    }
    co_return afterWaiting(session);
}

} // namespace morvex::commands
