#include "app/mail/protocol/MacIMAPClient.h"

#include "app/mail/protocol/ImapAnswers.h"
#include "app/mail/protocol/MacMailProtocolError.h"
#include "app/mail/protocol/MailBody.h"
#include "app/mail/protocol/MailHeader.h"
#include "shared/base/Ascii.h"
#include "shared/base/SystemTrouble.h"
#include "shared/base/Try.h"

#include <string_view>
#include <utility>

namespace morvex {

namespace {

/// A quoted string (RFC 3501, section 4.3). The text has no line break.
std::string quotedString(std::string_view text) {
    std::string result = "\"";
    for (const char character : text) {
        if (character == '\\' || character == '"') result += '\\';
        result += character;
    }
    return result + '"';
}

/// "A0001", with more digits where four do not do.
std::string tagOf(int sequence) {
    const auto digits = std::to_string(sequence);
    return "A" + std::string(digits.size() < 4 ? 4 - digits.size() : 0, '0') + digits;
}

Result<void> checkGreeting(std::string_view line) {
    constexpr std::string_view bye = "* BYE";
    if (equalsIgnoringCase(line.substr(0, bye.size()), bye))
        return fail(MacMailProtocolError::connection(StreamEnded{}.popis()));
    if (!line.starts_with('*'))
        return fail(MacMailProtocolError::connection(popis(SystemTrouble::badAnswer)));
    return {};
}

std::string joined(const std::vector<std::uint32_t>& uids) {
    std::string text;
    for (const auto uid : uids) {
        if (!text.empty()) text += ',';
        text += std::to_string(uid);
    }
    return text;
}

} // namespace

MacIMAPClient::MacIMAPClient(MailServices services, std::string host, std::string username,
                             std::string password, std::stop_token stop)
    : workers_(services.workers),
      login_{host, std::move(username), std::move(password)},
      connection_(services, std::move(host), port, std::move(stop)) {}

Task<Result<void>> MacIMAPClient::login() {
    CO_CHECK(login_.check());
    CO_CHECK(co_await connection_.otevrit());
    CO_CHECK(co_await awaitGreeting());
    CO_TRY(const auto, reply,
           co_await ask("LOGIN " + quotedString(login_.username) + " " + quotedString(login_.password)));
    if (!reply.isOk()) co_return fail(MacMailProtocolError::login());
    co_return Result<void>{};
}

Task<Result<std::int64_t>> MacIMAPClient::select() {
    CO_TRY(auto, lines, co_await command("SELECT \"INBOX\""));
    co_return co_await runOn(workers_, [&lines] { return existingMessages(lines); });
}

Task<Result<std::vector<std::uint32_t>>> MacIMAPClient::search(bool unreadOnly) {
    // The UIDs of a mailbox are one line, which is as long as the mailbox is large.
    CO_TRY(auto, lines,
           co_await command(unreadOnly ? "UID SEARCH UNSEEN" : "UID SEARCH ALL", ImapReply::longest));
    co_return co_await runOn(workers_, [&lines] { return foundUids(lines); });
}

Task<Result<std::vector<MacIMAPMessage>>> MacIMAPClient::fetchHeaders(std::vector<std::uint32_t> uids) {
    if (uids.empty()) co_return std::vector<MacIMAPMessage>();
    CO_TRY(auto, lines,
           co_await command("UID FETCH " + joined(uids) +
                            " (UID FLAGS BODY.PEEK[HEADER.FIELDS (FROM SUBJECT DATE)])"));
    co_return co_await runOn(workers_, [&] { return fetchedMessages(lines, std::move(uids)); });
}

Task<Result<std::optional<std::string>>> MacIMAPClient::fetchBody(std::uint32_t uid) {
    CO_TRY(auto, lines, co_await command("UID FETCH " + std::to_string(uid) + " (UID BODY.PEEK[TEXT])"));
    co_return co_await runOn(workers_, [&lines] { return fetchedBody(std::move(lines)); });
}

Task<void> MacIMAPClient::logout() {
    if (connection_.isOpen()) (void)co_await ask("LOGOUT");
    connection_.zavrit();
}

Task<Result<void>> MacIMAPClient::awaitGreeting() {
    CO_TRY(const auto, line, co_await connection_.receive());
    auto greeted = checkGreeting(line);
    if (!greeted) connection_.zavrit();
    co_return greeted;
}

Task<Result<ImapReply>> MacIMAPClient::ask(std::string command, std::size_t longestLine) {
    auto tag = tagOf(++sequence_);
    CO_CHECK(co_await connection_.send(tag + " " + command));
    auto reply = co_await collect(std::move(tag), longestLine);
    if (!reply) connection_.zavrit();
    co_return reply;
}

Task<Result<ImapReply>> MacIMAPClient::collect(std::string tag, std::size_t longestLine) {
    ImapReply reply(tag);
    while (!reply.isComplete()) {
        CO_TRY(const auto, line, co_await connection_.receive(longestLine));
        CO_TRY(const auto, literal, reply.addLine(line));
        if (!literal) continue;
        CO_TRY(const auto, bytes, co_await connection_.cist(*literal));
        CO_CHECK(reply.addLiteral(bytes));
    }
    co_return reply;
}

Task<Result<std::string>> MacIMAPClient::command(std::string text, std::size_t longestLine) {
    CO_TRY(auto, reply, co_await ask(std::move(text), longestLine));
    if (!reply.isOk())
        co_return fail(
            MacMailProtocolError::protocolError("Server odpověděl: {odpoved}"_sentence(reply.outcome())));
    co_return reply.takeLines();
}

} // namespace morvex
