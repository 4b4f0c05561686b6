#pragma once

#include "app/mail/protocol/MacIMAPClient.h"
#include "tests/app/mail/protocol/MailParts.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>
#include <vector>

namespace morvex {

/// A client of IMAP whose server's words the test lays out.
class ImapTest : public testing::Test {
  protected:
    static constexpr auto greeting = "* OK [CAPABILITY IMAP4rev1] ready\r\n";

    /// Lays out what the server says next.
    void say(const std::string& bytes) { parts.server->deliver(bytes); }

    void logIn() {
        say(std::string(greeting) + "A0001 OK Logged in\r\n");
        ASSERT_EQ(told(parts.end(client.login())), "ok");
        parts.server->sent.clear();
    }

    std::string select() { return told(parts.end(client.select())); }

    MailParts parts;
    std::stop_source stop;
    MacIMAPClient client{parts.services, "imap.b.cz", "jana@b.cz", "tajné", stop.get_token()};
};

constexpr auto refusedLogin = "Server odmítl přihlášení. Zkontroluj adresu a heslo nebo heslo pro aplikaci.";
constexpr auto brokenConnection = "Spojení s poštovním serverem selhalo: ";
constexpr auto tooLongReply = "Odpověď serveru je příliš dlouhá.";

} // namespace morvex
