#pragma once

#include "app/mail/protocol/MacMailConnection.h"
#include "app/mail/protocol/MailLogin.h"

#include <cstdint>
#include <stop_token>
#include <string>

namespace morvex {

/// Sends one message from one account by SMTP (RFC 5321) and serves that one operation.
class MacSMTPClient {
  public:
    static constexpr std::uint16_t port = 465;
    static constexpr int mostReplyLines = 10'000;

    MacSMTPClient(MailServices services, std::string host, std::string username, std::string password,
                  std::string sender, std::string senderName, std::stop_token stop = {});

    /// Fails with `MacMailProtocolError`. A failure of the last step, of taking leave, is one too, although
    /// the server has taken the message by then.
    Task<Result<void>> send(std::string to, std::string subject, std::string body);

  private:
    [[nodiscard]] Result<void> check(const std::string& recipient) const;
    Task<Result<void>> connect();
    Task<Result<void>> logIn();
    Task<Result<void>> deliver(std::string to, std::string subject, std::string body);
    /// Sends a line and waits for the reply to it.
    Task<Result<void>> exchange(std::string line, int wanted);
    Task<Result<void>> expect(int wanted);
    /// The words of a server that repeats the password are left out, since the phone is told them.
    [[nodiscard]] std::string withoutPassword(std::string line) const;

    MailServices services_;
    MailLogin login_;
    std::string sender_;
    std::string senderName_;
    MacMailConnection connection_;
};

} // namespace morvex
