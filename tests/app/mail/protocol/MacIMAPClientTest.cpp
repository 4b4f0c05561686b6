#include "app/mail/protocol/MacIMAPClient.h"

#include "app/mail/protocol/MacMailProtocolError.h"
#include "tests/app/mail/protocol/ImapTest.h"

namespace morvex {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;
using Lines = std::vector<std::string>;
using Uids = std::vector<std::uint32_t>;

class MacIMAPClientTest : public ImapTest {};

TEST_F(MacIMAPClientTest, ReadsAnInboxLineByLine) {
    const auto step = [&](const auto& result, const std::string& sent, const std::string& reply) {
        EXPECT_EQ(parts.sent().back(), sent);
        EXPECT_FALSE(*result) << "it waits for the reply to " << sent;
        say(reply);
        parts.settle();
    };
    const auto login = parts.begin(client.login());
    EXPECT_TRUE(parts.server->sent.empty()) << "it waits for the greeting";
    say("* OK ready\r\n");
    parts.settle();
    step(login, R"(A0001 LOGIN "jana@b.cz" "tajné")", "* CAPABILITY IMAP4rev1\r\nA0001 OK Logged in\r\n");
    EXPECT_EQ(told(login->value()), "ok");

    const auto select = parts.begin(client.select());
    step(select, R"(A0002 SELECT "INBOX")",
         "* FLAGS (\\Seen)\r\n* 3 EXISTS\r\nA0002 OK [READ-WRITE] Done\r\n");
    EXPECT_EQ(select->value().value(), 3);

    const auto search = parts.begin(client.search(true));
    step(search, "A0003 UID SEARCH UNSEEN", "* SEARCH 4 9\r\nA0003 OK\r\n");
    EXPECT_EQ(search->value().value(), (Uids{9, 4}));

    const auto headers = parts.begin(client.fetchHeaders({9, 4}));
    step(headers, "A0004 UID FETCH 9,4 (UID FLAGS BODY.PEEK[HEADER.FIELDS (FROM SUBJECT DATE)])",
         "* 1 FETCH (UID 4 FLAGS (\\Seen) BODY[HEADER.FIELDS (FROM SUBJECT DATE)] {17}\r\nSubject: "
         "cesta\r\n)\r\n"
         "* 3 FETCH (UID 9 FLAGS () BODY[HEADER.FIELDS (FROM SUBJECT DATE)] {11}\r\nFrom: Jan\r\n)\r\nA0004 "
         "OK\r\n");
    EXPECT_EQ(headers->value().value(),
              (std::vector<MacIMAPMessage>{{9, "Jan", "(bez předmětu)", "", false},
                                           {4, "(neznámý odesílatel)", "cesta", "", true}}));

    const auto body = parts.begin(client.fetchBody(9));
    step(body, "A0005 UID FETCH 9 (UID BODY.PEEK[TEXT])",
         "* 3 FETCH (UID 9 BODY[TEXT] {13}\r\nAhoj,\r\nJan.\r\n)\r\nA0005 OK\r\n");
    EXPECT_EQ(body->value().value(), "Ahoj,\nJan.\n");

    const auto logout = parts.begin([](MacIMAPClient& leaving) -> Task<Result<void>> {
        co_await leaving.logout();
        co_return Result<void>{};
    }(client));
    EXPECT_FALSE(parts.server->isClosed);
    step(logout, "A0006 LOGOUT", "* BYE\r\nA0006 OK\r\n");
    EXPECT_TRUE(parts.server->isClosed);
    EXPECT_EQ(parts.tls.asked, Lines{"imap.b.cz:993"});
    EXPECT_EQ(parts.clock.waiting(), 0U);
}

TEST_F(MacIMAPClientTest, QuotesWhatStandsBetweenQuotes) {
    MacIMAPClient quoting(parts.services, "imap.b.cz", R"(a"b\c)", R"(ta "jné"\)");
    say(greeting + "A0001 OK\r\n"s);
    EXPECT_EQ(told(parts.end(quoting.login())), "ok");
    EXPECT_EQ(parts.sent(), Lines{R"(A0001 LOGIN "a\"b\\c" "ta \"jné\"\\")"});
}

TEST_F(MacIMAPClientTest, RefusesWhatWouldBreakALineBeforeItConnects) {
    for (const auto& bad : {"x\r\nA0009 DELETE INBOX"s, "x\n"s, "x\0"s}) {
        MacIMAPClient badHost(parts.services, bad, "u", "p");
        MacIMAPClient badName(parts.services, "h", bad, "p");
        MacIMAPClient badPassword(parts.services, "h", "u", bad);
        EXPECT_EQ(told(parts.end(badHost.login())), brokenConnection + "Adresa serveru není platná."s);
        EXPECT_EQ(told(parts.end(badName.login())), "E-mailová adresa není platná.");
        EXPECT_EQ(told(parts.end(badPassword.login())), refusedLogin);
    }
    EXPECT_TRUE(parts.tls.asked.empty());
}

TEST_F(MacIMAPClientTest, ARefusedLoginIsOneWhateverTheServerSays) {
    for (const auto* answer : {"NO [AUTHENTICATIONFAILED] Wrong", "BAD LOGIN \"jana@b.cz\" \"tajné\"",
                               "NO [ALERT] Visit https://mail.example", "NO [LIMIT] Later", "", "BYE"}) {
        MailParts own;
        MacIMAPClient refused(own.services, "imap.b.cz", "jana@b.cz", "tajné");
        own.server->deliver(greeting + "A0001 "s + answer + "\r\n");
        const auto result = own.end(refused.login());
        ASSERT_FALSE(result) << answer;
        EXPECT_EQ(*result.error().as<MacMailProtocolError>(), MacMailProtocolError::login()) << answer;
    }
}

TEST_F(MacIMAPClientTest, ARefusedCommandIsToldInTheWordsOfTheServer) {
    logIn();
    for (const auto* words : {"NO [ALERT] Plná schránka", "BAD What?", "NO [LIMIT] Too many", "nO", "BYE"}) {
        parts.server->sent.clear();
        const auto result = parts.begin(client.select());
        say(parts.sent().back().substr(0, 5) + "  " + words + " \r\n");
        parts.settle();
        EXPECT_EQ(told(result->value()), "Server odpověděl: "s + words);
    }
}

TEST_F(MacIMAPClientTest, TakesLeaveAfterARefusal) {
    say(greeting + "A0001 NO\r\nA0002 OK\r\n"s);
    EXPECT_EQ(told(parts.end(client.login())), refusedLogin);
    EXPECT_FALSE(parts.server->isClosed);
    EXPECT_TRUE(parts.executor.run(client.logout()));
    EXPECT_EQ(parts.sent().back(), "A0002 LOGOUT");
    EXPECT_TRUE(parts.server->isClosed);
}

TEST_F(MacIMAPClientTest, TheFailureOfTheLeaveDoesNotCount) {
    for (const auto* answer : {"A0002 NO\r\n", "A0002 BAD\r\n", "* BYE\r\n"}) {
        MailParts own;
        MacIMAPClient leaving(own.services, "imap.b.cz", "u", "p");
        own.server->deliver(greeting + "A0001 OK\r\n"s + answer);
        own.server->endStream();
        EXPECT_EQ(told(own.end(leaving.login())), "ok");
        EXPECT_TRUE(own.executor.run(leaving.logout())) << answer;
        EXPECT_TRUE(own.server->isClosed);
    }
}

TEST_F(MacIMAPClientTest, SendsNothingMoreAfterATimeOut) {
    logIn();
    const auto result = parts.begin(client.select());
    parts.clock.advance(15s);
    parts.settle();
    EXPECT_EQ(told(result->value()), brokenConnection + "Server neodpověděl."s);
    EXPECT_TRUE(parts.executor.run(client.logout()));
    EXPECT_EQ(select(), brokenConnection + "Spojení bylo zrušeno."s);
    EXPECT_EQ(parts.sent(), Lines{R"(A0002 SELECT "INBOX")"});
}

TEST_F(MacIMAPClientTest, SendsNothingMoreOverABrokenConnection) {
    logIn();
    parts.server->endStream();
    EXPECT_EQ(select(), brokenConnection + "Server spojení ukončil."s);
    EXPECT_TRUE(parts.executor.run(client.logout()));
    EXPECT_EQ(parts.sent(), Lines{R"(A0002 SELECT "INBOX")"});
}

TEST_F(MacIMAPClientTest, AStopEndsWhatWaits) {
    logIn();
    const auto result = parts.begin(client.search(false));
    EXPECT_EQ(parts.sent(), Lines{"A0002 UID SEARCH ALL"});
    stop.request_stop();
    parts.settle();
    EXPECT_EQ(told(result->value()), brokenConnection + "Spojení bylo zrušeno."s);
}

TEST_F(MacIMAPClientTest, AsksNothingForNoMessages) {
    logIn();
    EXPECT_EQ(parts.end(client.fetchHeaders({})).value(), std::vector<MacIMAPMessage>());
    EXPECT_TRUE(parts.server->sent.empty());
}

TEST_F(MacIMAPClientTest, AMessageThatTheServerDoesNotHaveIsNothing) {
    logIn();
    say("A0002 OK Nothing\r\n* 4 EXISTS\r\nA0003 OK\r\n* 1 FETCH (UID 8 BODY[TEXT] {0}\r\n)\r\nA0004 OK\r\n");
    EXPECT_EQ(parts.end(client.fetchBody(8)).value(), std::nullopt);
    EXPECT_EQ(parts.end(client.fetchHeaders({8})).value(), std::vector<MacIMAPMessage>());
    EXPECT_EQ(parts.end(client.fetchBody(8)).value(), "") << "one of length 0 is a text";
}

TEST_F(MacIMAPClientTest, ReadsTextsOnAWorker) {
    logIn();
    say("* 1 FETCH (UID 8 BODY[TEXT] {1}\r\nx)\r\nA0002 OK\r\n");
    bool ended = false;
    parts.executor.start([](MacIMAPClient& reading, bool& done) -> Task<void> {
        EXPECT_EQ((co_await reading.fetchBody(8)).value(), "x");
        done = true;
    }(client, ended));
    parts.executor.runUntilIdle();
    EXPECT_FALSE(ended);
    EXPECT_EQ(parts.workers.runUntilIdle(), 1);
    parts.executor.runUntilIdle();
    EXPECT_TRUE(ended);
}

TEST_F(MacIMAPClientTest, CountsItsTags) {
    logIn();
    for (int sequence = 2; sequence <= 10'001; ++sequence) {
        const auto digits = std::to_string(sequence);
        const auto tag = "A" + std::string(digits.size() < 4 ? 4 - digits.size() : 0, '0') + digits;
        say(tag + " OK\r\n");
        ASSERT_EQ(select(), "ok") << tag;
    }
    EXPECT_EQ(parts.sent().back(), R"(A10001 SELECT "INBOX")");
}

} // namespace
} // namespace morvex
