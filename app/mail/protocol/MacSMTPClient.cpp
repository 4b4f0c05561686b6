#include "app/mail/protocol/MacSMTPClient.h"

#include "app/mail/protocol/MacMailProtocolError.h"
#include "app/mail/protocol/MailAddress.h"
#include "app/mail/protocol/SmtpMessage.h"
#include "app/mail/protocol/SmtpReply.h"
#include "shared/base/Base64.h"
#include "shared/base/Try.h"

#include <utility>

namespace morvex {

namespace {

namespace reply {
constexpr int ready = 220;
constexpr int done = 250;
constexpr int closing = 221;
constexpr int loggedIn = 235;
constexpr int goOn = 334;
constexpr int sendMessage = 354;
} // namespace reply

/// With the host in front of the reason, which is not wrapped a second time.
Error withHost(const std::string& host, const Error& error) {
    const auto* failure = error.as<MacMailProtocolError>();
    const auto* inner = failure ? std::get_if<MacMailProtocolError::Connection>(&failure->value) : nullptr;
    return MacMailProtocolError::connection("K serveru {server} se nepodařilo připojit: {potiz}"_sentence(
        host, inner ? inner->text : error.popis()));
}

std::string inBase64(const std::string& text) {
    return base64Encode(asBytes(text));
}

} // namespace

MacSMTPClient::MacSMTPClient(MailServices services, std::string host, std::string username,
                             std::string password, std::string sender, std::string senderName,
                             std::stop_token stop)
    : services_(services),
      login_{host, std::move(username), std::move(password)},
      sender_(std::move(sender)),
      senderName_(std::move(senderName)),
      connection_(services, std::move(host), port, std::move(stop)) {}

Task<Result<void>> MacSMTPClient::send(std::string to, std::string subject, std::string body) {
    CO_CHECK(check(to));
    CO_CHECK(co_await connect());
    auto sent = co_await deliver(std::move(to), std::move(subject), std::move(body));
    connection_.zavrit();
    co_return sent;
}

Result<void> MacSMTPClient::check(const std::string& recipient) const {
    CHECK(checkMailAddress(sender_));
    CHECK(checkMailAddress(recipient));
    return login_.check();
}

Task<Result<void>> MacSMTPClient::connect() {
    auto opened = co_await connection_.otevrit();
    if (!opened) co_return fail(withHost(login_.host, opened.error()));
    co_return Result<void>{};
}

Task<Result<void>> MacSMTPClient::deliver(std::string to, std::string subject, std::string body) {
    CO_CHECK(co_await expect(reply::ready));
    CO_CHECK(co_await logIn());
    CO_CHECK(co_await exchange("MAIL FROM:<" + sender_ + ">", reply::done));
    CO_CHECK(co_await exchange("RCPT TO:<" + to + ">", reply::done));
    CO_CHECK(co_await exchange("DATA", reply::sendMessage));
    const auto now = services_.clock.now();
    const SmtpMessage message{.sender = sender_,
                              .senderName = senderName_,
                              .recipient = std::move(to),
                              .subject = std::move(subject),
                              .body = std::move(body),
                              .date = now,
                              .offset = services_.localTime ? services_.localTime->zone().offset(now)
                                                            : std::chrono::seconds(0)};
    auto text = co_await runOn(services_.workers, [&message] { return message.text(); });
    CO_CHECK(co_await connection_.send(std::move(text)));
    CO_CHECK(co_await exchange(".", reply::done));
    co_return co_await exchange("QUIT", reply::closing);
}

Task<Result<void>> MacSMTPClient::logIn() {
    CO_CHECK(co_await exchange("EHLO morvex.local", reply::done));
    CO_CHECK(co_await exchange("AUTH LOGIN", reply::goOn));
    CO_CHECK(co_await exchange(inBase64(login_.username), reply::goOn));
    co_return co_await exchange(inBase64(login_.password), reply::loggedIn);
}

Task<Result<void>> MacSMTPClient::exchange(std::string line, int wanted) {
    CO_CHECK(co_await connection_.send(std::move(line)));
    co_return co_await expect(wanted);
}

Task<Result<void>> MacSMTPClient::expect(int wanted) {
    for (int count = 0; count < mostReplyLines; ++count) {
        CO_TRY(auto, line, co_await connection_.receive());
        if (!continuesSmtpReply(line)) co_return checkSmtpReply(withoutPassword(std::move(line)), wanted);
    }
    co_return fail(MacMailProtocolError::protocolError(StreamTooLong{}.popis()));
}

std::string MacSMTPClient::withoutPassword(std::string line) const {
    constexpr std::size_t code = 3;
    const auto& password = login_.password;
    const bool repeats = !password.empty() && (line.contains(password) || line.contains(inBase64(password)));
    return repeats ? line.substr(0, code) : line;
}

} // namespace morvex
