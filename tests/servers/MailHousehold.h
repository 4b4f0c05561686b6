#pragma once

#include "tests/servers/PrivateHousehold.h"
#include "tests/support/RealMailServers.h"

#include <boost/json/object.hpp>

#include <functional>
#include <memory>
#include <string>
#include <vector>

namespace morvex {

/// A household with real mail servers, imap.example:993 and smtp.example:465, and a phone that is paired with
/// the console.
class MailHousehold : public PrivateHousehold {
  public:
    /// What a person answers to the questions of `ucet-pridat`.
    struct TypedAccount {
        std::string name;
        std::string senderName = "Jana Nová";
        std::string password = RealImapServer::password;
        std::string imapHost = "imap.example";
        std::string smtpHost = "smtp.example";
    };

    explicit MailHousehold(Program::Input input = Program::Input::pipe);
    /// Ends the companion by its command, so that a sanitizer tells what it has found in it.
    ~MailHousehold();
    MailHousehold(const MailHousehold&) = delete;
    MailHousehold& operator=(const MailHousehold&) = delete;

    /// Types a command, and returns the line of the console that contains `answer`.
    std::string type(const std::string& command, const std::string& answer);

    /// Adds an account line by line, and returns the line with what came of the login.
    std::string add(const TypedAccount& account, const std::string& outcome = "Ověřeno");

    /// The result of `mac.mail.send`, during which the computer asks and a person does this.
    Ended send(const boost::json::object& mail, const std::function<void()>& decide,
               const std::vector<std::string>& phoneOptions = {});

    /// The folders of all files of this household with this text, also where it is written in base64.
    [[nodiscard]] std::vector<std::string> foldersWith(const std::string& text) const;

    TestAuthority::Identity identity;
    std::unique_ptr<RealImapServer> imap;
    std::unique_ptr<RealSmtpServer> smtp;
    std::unique_ptr<Program> mac;
};

} // namespace morvex
