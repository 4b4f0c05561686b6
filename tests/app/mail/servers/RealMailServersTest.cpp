#include "app/mail/protocol/MacIMAPClient.h"
#include "app/mail/protocol/MacSMTPClient.h"
#include "shared/base/Base64.h"
#include "shared/base/SystemTrouble.h"
#include "tests/support/Await.h"
#include "tests/support/RealMail.h"

#include <boost/json/parse.hpp>
#include <gtest/gtest.h>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;

constexpr auto refusedLogin = "Server odmítl přihlášení. Zkontroluj adresu a heslo nebo heslo pro aplikaci.";

template <class T> std::string told(const Result<T>& result) {
    return result ? "ok" : result.error().popis().czech();
}

/// The servers are started once; each test fills the inbox with messages of its own.
class RealMailServersTest : public testing::Test {
  protected:
    static void SetUpTestSuite() { servers = std::make_unique<RealMail>(); }

    static void TearDownTestSuite() { servers.reset(); }

    static MacIMAPClient reader(const std::string& password = RealImapServer::password,
                                const std::string& host = "localhost") {
        return {servers->services(), host, RealImapServer::username, password};
    }

    static MacSMTPClient sender(const std::string& password = RealSmtpServer::password,
                                const std::string& host = "localhost") {
        return {servers->services(), host, RealSmtpServer::username, password, "jana@b.cz", "Jana Nová"};
    }

    template <class T> static T end(Task<T> task) { return await(servers->main, std::move(task)); }

    static inline std::unique_ptr<RealMail> servers;
};

TEST_F(RealMailServersTest, ReadAnInbox) {
    auto& imap = servers->imap;
    std::string digits = base64Encode(asBytes("Dlouhý text, který je delší.\n"));
    imap.deliver(
        "1.a",
        "From: =?UTF-8?Q?Ji=C5=99=C3=AD_Nov=C3=BD?= <j@b.cz>\nSubject: =?UTF-8?B?xaBrb2xh?=\n "
        "pokračování\nDate: Sat, 14 Mar 2026 10:00:00 +0100\nMessage-ID: <a@b.cz>\n\nAhoj.\n\n* bod\nJirka\n",
        true);
    imap.deliver("2.b", "Subject: tajné\n\n" + digits.substr(0, 20) + "\n" + digits.substr(20) + "\n");
    imap.deliver("3.c", "From: x@y.cz\n\nP=C5=99=\n=C3=ADklad\n");
    imap.deliver("4.d", "From: x@y.cz\n\n");

    auto client = reader();
    ASSERT_EQ(told(end(client.login())), "ok");
    EXPECT_EQ(end(client.select()).value(), 4);
    EXPECT_EQ(end(client.search(true)).value(), (std::vector<std::uint32_t>{4, 3, 2}));
    const auto uids = end(client.search(false)).value();
    EXPECT_EQ(uids, (std::vector<std::uint32_t>{4, 3, 2, 1}));
    const auto messages = end(client.fetchHeaders(uids)).value();
    ASSERT_EQ(messages.size(), 4U);
    EXPECT_EQ(messages[3],
              (MacIMAPMessage{1, "Jiří Nový <j@b.cz>", "Škola", "Sat, 14 Mar 2026 10:00:00 +0100", true}));
    EXPECT_EQ(messages[2], (MacIMAPMessage{2, "(neznámý odesílatel)", "tajné", "", false}));
    EXPECT_EQ(end(client.fetchBody(1)).value(), "Ahoj.\n\nJirka\n");
    EXPECT_EQ(end(client.fetchBody(2)).value(), "Dlouhý text, který je delší.\n");
    EXPECT_EQ(end(client.fetchBody(3)).value(), "Příklad\n");
    EXPECT_EQ(end(client.fetchBody(4)).value(), "");
    EXPECT_EQ(end(client.fetchBody(99)).value(), std::nullopt);
    EXPECT_EQ(end(client.fetchHeaders({99})).value(), std::vector<MacIMAPMessage>());
    EXPECT_EQ(end(client.search(true)).value().size(), 3U) << "reading leaves a message unread";
    end(client.logout());
}

TEST_F(RealMailServersTest, ReadABodyOfMegabytes) {
    std::string text;
    while (text.size() < 5'000'000) text += "Příliš žluťoučký kůň úpěl ďábelské ódy.\n";
    const auto digits = base64Encode(asBytes(text));
    std::string message = "Subject: velká\n\n";
    for (std::size_t begin = 0; begin < digits.size(); begin += 76)
        message += digits.substr(begin, 76) + "\n";
    servers->imap.deliver("9.z", message);
    auto client = reader();
    ASSERT_EQ(told(end(client.login())), "ok");
    ASSERT_EQ(told(end(client.select())), "ok");
    const auto newest = end(client.search(false)).value().at(0);
    EXPECT_TRUE(end(client.fetchBody(newest)).value() == text);
    end(client.logout());
}

TEST_F(RealMailServersTest, RefuseAWrongPassword) {
    auto reading = reader("x");
    EXPECT_EQ(told(end(reading.login())), refusedLogin);
    end(reading.logout());
    EXPECT_EQ(told(end(sender("x").send("petr@c.cz", "", ""))), refusedLogin);
}

TEST_F(RealMailServersTest, RefuseACommandInTheirWords) {
    auto client = reader();
    ASSERT_EQ(told(end(client.login())), "ok");
    EXPECT_TRUE(told(end(client.search(false))).starts_with("Server odpověděl: BAD"))
        << "no mailbox is selected";
    end(client.logout());
    EXPECT_EQ(told(end(sender().send("nobody@c.cz", "", ""))),
              "SMTP server odpověděl: 550 5.1.1 No such user");
}

TEST_F(RealMailServersTest, TakeAMessageAsItWasMeant) {
    std::string body = "Příliš žluťoučký kůň\n.\n..\nFrom the start\n";
    while (body.size() < 20'000) body += "úpěl ďábelské ódy\n";
    ASSERT_EQ(told(end(sender().send("petr@c.cz", "Věc \"1\"", body))), "ok");
    const auto message = boost::json::parse(servers->smtp.nextMessage()).as_object();
    EXPECT_EQ(message.at("sender"), "jana@b.cz");
    EXPECT_EQ(message.at("recipients"), (boost::json::array{"petr@c.cz"}));
    EXPECT_EQ(message.at("from"), "Jana Nová <jana@b.cz>");
    EXPECT_EQ(message.at("to"), "petr@c.cz");
    EXPECT_EQ(message.at("subject"), "Věc \"1\"");
    EXPECT_EQ(message.at("body"), boost::json::string(body));
    EXPECT_EQ(message.at("headers"), (boost::json::array{"From", "To", "Subject", "Date", "MIME-Version",
                                                         "Content-Type", "Content-Transfer-Encoding"}));
}

TEST_F(RealMailServersTest, AreNotTalkedToWithoutTheirCertificate) {
    const auto wrongName = popis(SystemTrouble::certificateOtherName).czech();
    EXPECT_EQ(told(end(reader(RealImapServer::password, "127.0.0.1").login())),
              "Spojení s poštovním serverem selhalo: " + wrongName);
    EXPECT_EQ(told(end(sender(RealSmtpServer::password, "127.0.0.1").send("petr@c.cz", "", ""))),
              "Spojení s poštovním serverem selhalo: K serveru 127.0.0.1 se nepodařilo připojit: " +
                  wrongName);
}

/// What a client says of an IMAP server with this certificate.
std::string saidOf(const TestAuthority::Identity& identity, const std::string& trusted) {
    const RealImapServer server(identity);
    const auto clock = SystemClock::create().value();
    ThreadExecutor main("main");
    AsioTlsClient tls(NetworkLimits{}, trusted);
    OtherPorts ports(tls, {{993, server.port()}});
    MacIMAPClient client({ports, *clock, main}, "localhost", RealImapServer::username,
                         RealImapServer::password);
    return told(await(main, client.login()));
}

TEST(RealMailCertificates, AreToldApart) {
    const TestAuthority authority;
    const TestAuthority other;
    const auto failure = [](SystemTrouble trouble) {
        return "Spojení s poštovním serverem selhalo: " + popis(trouble).czech();
    };
    EXPECT_EQ(saidOf(authority.issue("DNS:localhost"), authority.certificate()), "ok");
    EXPECT_EQ(saidOf(authority.issue("DNS:localhost", {-48h, -1h}), authority.certificate()),
              failure(SystemTrouble::certificateExpired));
    EXPECT_EQ(saidOf(authority.issue("DNS:mail.example"), authority.certificate()),
              failure(SystemTrouble::certificateOtherName));
    EXPECT_EQ(saidOf(authority.issue("DNS:localhost"), other.certificate()),
              failure(SystemTrouble::certificateUntrusted));
    EXPECT_EQ(saidOf(TestAuthority::issueToItself("DNS:localhost"), authority.certificate()),
              failure(SystemTrouble::certificateUntrusted));
}

} // namespace
} // namespace morvex
