#pragma once

#include "app/mail/protocol/ImapReply.h"
#include "app/mail/protocol/MacIMAPMessage.h"
#include "app/mail/protocol/MacMailConnection.h"
#include "app/mail/protocol/MailLogin.h"

#include <cstdint>
#include <optional>
#include <stop_token>
#include <string>
#include <vector>

namespace morvex {

/// Reads the inbox of one account by IMAP (RFC 3501), without changing anything in it. It serves one
/// operation, and its owner lets one call end before the next, on one executor:
///
///     login ▸ select ▸ search ▸ fetchHeaders … fetchBody … ▸ logout
///
/// Every failure is a `MacMailProtocolError`. After one that is the server's refusal the next call is
/// `logout`; any other failure closes the connection, and what follows fails or, like `logout`, does nothing.
/// A server that keeps sending is bounded in memory but not in time, for which the owner has `stop`.
class MacIMAPClient {
  public:
    static constexpr std::uint16_t port = 993;

    MacIMAPClient(MailServices services, std::string host, std::string username, std::string password,
                  std::stop_token stop = {});

    /// Connects, waits for the greeting and logs in.
    Task<Result<void>> login();

    /// Selects the inbox. Returns the number of its messages, 0 if the server does not tell it.
    Task<Result<std::int64_t>> select();

    /// The UIDs of all messages or of the unread ones, the last one that the server names first.
    Task<Result<std::vector<std::uint32_t>>> search(bool unreadOnly);

    /// What the server knows of these messages, the highest UID first. Asks nothing for an empty list.
    Task<Result<std::vector<MacIMAPMessage>>> fetchHeaders(std::vector<std::uint32_t> uids);

    /// The text of a message; nothing if the server has no such message.
    Task<Result<std::optional<std::string>>> fetchBody(std::uint32_t uid);

    /// Takes leave if the connection is still open, whatever the server answers, and closes it.
    Task<void> logout();

  private:
    Task<Result<void>> awaitGreeting();
    /// The reply to a command, whatever its outcome.
    Task<Result<ImapReply>> ask(std::string command,
                                std::size_t longestLine = MacMailConnection::longestLine);
    Task<Result<ImapReply>> collect(std::string tag, std::size_t longestLine);
    /// The lines of a reply whose outcome is good.
    Task<Result<std::string>> command(std::string text,
                                      std::size_t longestLine = MacMailConnection::longestLine);

    Executor& workers_;
    MailLogin login_;
    MacMailConnection connection_;
    int sequence_ = 0; ///< of the last tag
};

} // namespace morvex
