#pragma once

#include "app/mail/protocol/MacMailConnection.h"

#include <stop_token>
#include <string>

namespace morvex {

/// Sends one message from one account by SMTP (RFC 5321) and serves that one operation.
class MacSMTPClient {
  public:
    static constexpr std::uint16_t port = 465;

    MacSMTPClient(MailServices services, std::string host, std::string username, std::string password,
                  std::string sender, std::string senderName, std::stop_token stop = {});

    /// Fails with `MacMailProtocolError`. A failure of the last step, of taking leave, is one too, although
    /// the server has taken the message by then.
    Task<Result<void>> send(std::string to, std::string subject, std::string body);

  private:
    [[nodiscard]] Result<void> check(const std::string& recipient) const;
    Task<Result<void>> connect();
    Task<Result<void>> logIn();
    /// Sends a line and waits for the reply to it.
    Task<Result<void>> exchange(std::string line, int wanted);
    Task<Result<void>> expect(int wanted);
    [[nodiscard]] std::string withoutPassword(std::string line) const;
    Task<std::string> message(std::string to, std::string subject, std::string body);

    MailServices services_;
    std::string host_;
    std::string username_;
    std::string password_;
    std::string sender_;
    std::string senderName_;
    MacMailConnection connection_;
};

} // namespace morvex
