#include "app/mail/protocol/MacMailProtocolError.h"
#include "tests/app/mail/protocol/ImapTest.h"

#include <utility>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using namespace std::string_literals;

class HostileImapTest : public ImapTest {
  protected:
    /// What a login to a server with this greeting comes to.
    std::string greetedWith(const std::string& line) {
        MailParts own;
        MacIMAPClient greeted(own.services, "imap.b.cz", "u", "p");
        own.server->deliver(line + "\r\nA0001 OK\r\n");
        const auto result = told(own.end(greeted.login()));
        if (own.server->sent.empty()) return result;
        return result + ", logged in";
    }
};

TEST_F(HostileImapTest, AnyUntaggedGreetingWillDo) {
    for (const auto* line : {"* OK", "* NO [ALERT] busy", "* BAD", "* PREAUTH welcome", "*",
                             "* OK Dobrý den, vítej", "* \xe8\xff", "* OK {12}", "* 5 EXISTS", "*OK"})
        EXPECT_EQ(greetedWith(line), "ok, logged in") << line;
}

TEST_F(HostileImapTest, NoLoginFollowsAnotherGreeting) {
    for (const auto* line : {"* BYE", "* bye Overloaded", "* BYE [ALERT] x"})
        EXPECT_EQ(greetedWith(line), brokenConnection + "Server spojení ukončil."s) << line;
    for (const auto* line :
         {"A0001 OK", "A0000 OK", "+ OK", "220 mail.example ESMTP", "", " * OK", "HTTP/1.1 400"})
        EXPECT_EQ(greetedWith(line), brokenConnection + "Server odpověděl nesrozumitelně."s) << line;
}

TEST_F(HostileImapTest, UntaggedLinesAreIgnoredAtEveryStep) {
    const auto noise =
        "* OK [ALERT] x\r\n+ \r\n\r\n* BYE\r\nA0009 OK\r\n* 9 EXPUNGE\r\n* 4 FETCH (FLAGS ())\r\n"
        "* LIST () \"/\" x\r\n* FLAGS (\\Seen)\r\n"s;
    say(greeting + noise + "A0001 OK\r\n" + noise + "* 3 EXISTS\r\n" + noise + "A0002 OK\r\n" + noise +
        "* SEARCH 8\r\n" + noise + "A0003 OK\r\n" + noise +
        "* 1 FETCH (UID 8 BODY[HEADER.FIELDS (FROM SUBJECT DATE)] {8}\r\nFrom: a\n)\r\n" + noise +
        "A0004 OK\r\n" + noise + "A0005 OK\r\n");
    EXPECT_EQ(told(parts.end(client.login())), "ok");
    EXPECT_EQ(parts.end(client.select()).value(), 3);
    EXPECT_EQ(parts.end(client.search(false)).value(), std::vector<std::uint32_t>{8});
    EXPECT_EQ(parts.end(client.fetchHeaders({8})).value().at(0).from, "a");
    EXPECT_EQ(parts.end(client.fetchBody(8)).value(), std::nullopt);
}

TEST_F(HostileImapTest, AByeInTheMiddleIsTheEndOfTheConnection) {
    logIn();
    say("* 3 EXISTS\r\n* BYE Going down\r\n");
    parts.server->endStream();
    EXPECT_EQ(select(), brokenConnection + "Server spojení ukončil."s);
}

TEST_F(HostileImapTest, FetchKnowsLessThanSearch) {
    logIn();
    say("* SEARCH 1 2 3\r\nA0002 OK\r\n* 1 FETCH (UID 2 FLAGS ())\r\n* 9 FETCH (UID 77 FLAGS ())\r\nA0003 "
        "OK\r\n");
    const auto found = parts.end(client.search(false)).value();
    const auto messages = parts.end(client.fetchHeaders(found)).value();
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].uid, 2U);
}

TEST_F(HostileImapTest, ALineWithoutEndIsCutOff) {
    logIn();
    for (int chunk = 0; chunk < 20; ++chunk) say(std::string(16'384, 'x'));
    EXPECT_EQ(select(), tooLongReply);
    EXPECT_EQ(parts.server->received, 1 + 5) << "64 KiB and what shows that it is more";
    EXPECT_TRUE(parts.server->isClosed);
    EXPECT_TRUE(parts.executor.run(client.logout()));
    EXPECT_EQ(parts.server->sent.size(), 1U) << "nothing is sent to such a server";
}

TEST_F(HostileImapTest, ALiteralOf10GBIsNotRead) {
    logIn();
    say("* 1 FETCH (UID 8 BODY[TEXT] {10000000000}\r\n");
    for (int chunk = 0; chunk < 20; ++chunk) say(std::string(16'384, 'x'));
    EXPECT_EQ(told(parts.end(client.fetchBody(8))), tooLongReply);
    EXPECT_EQ(parts.server->received, 1 + 1);
    EXPECT_TRUE(parts.server->isClosed);
}

TEST_F(HostileImapTest, ManyLinesAreOneReplyOf24MiBAtMost) {
    logIn();
    std::string line(65'534, 'x');
    for (int count = 0; count < 400; ++count) say(line + "\r\n");
    EXPECT_EQ(select(), tooLongReply);
    EXPECT_LT(parts.server->received, 1 + 390);
    EXPECT_TRUE(parts.server->isClosed);
}

TEST_F(HostileImapTest, TwoLiteralsAreOneReplyOf24MiBAtMost) {
    logIn();
    const std::string literal(std::size_t{16} << 20, 'x');
    say("* 1 FETCH (UID 8 BODY[TEXT] {16777216}\r\n" + literal + " BODY[TEXT] {16777216}\r\n" + literal +
        ")\r\nA0002 OK\r\n");
    EXPECT_EQ(told(parts.end(client.fetchBody(8))), tooLongReply);
}

TEST_F(HostileImapTest, AServerThatDripsIsGivenUp) {
    logIn();
    const auto result = parts.begin(client.select());
    for (int second = 0; second < 15; ++second) {
        EXPECT_FALSE(*result) << second;
        say("x");
        parts.clock.advance(1s);
        parts.settle();
    }
    EXPECT_EQ(told(result->value()), brokenConnection + "Server neodpověděl."s);
}

TEST_F(HostileImapTest, ReadsABodyOf16MiB) {
    logIn();
    const std::string text((std::size_t{16} << 20) - 1, 'x');
    say("* 1 FETCH (UID 8 BODY[TEXT] {16777216}\r\n" + text + "!)\r\nA0002 OK\r\n");
    EXPECT_EQ(parts.end(client.fetchBody(8)).value(), text + "!");
}

TEST_F(HostileImapTest, ReadsABodyOfMillionsOfEmptyLines) {
    logIn();
    constexpr std::size_t count = 4'000'000;
    say("* 1 FETCH (UID 8 BODY[TEXT] {4000000}\r\n" + std::string(count, '\n') + ")\r\nA0002 OK\r\n");
    EXPECT_EQ(parts.end(client.fetchBody(8)).value().value().size(), count);
}

TEST_F(HostileImapTest, ReadsAHeaderFullOfBeginsOfWords) {
    logIn();
    for (const auto* part : {"=?", "=?u?Q?", "=?u?B?x?=", "?=?=", "=?u?q?=?="}) {
        std::string field;
        while (field.size() < 65'000) field += part;
        parts.server->sent.clear();
        const auto result = parts.begin(client.fetchHeaders({8}));
        say("* 1 FETCH (UID 8 BODY[HEADER.FIELDS (FROM SUBJECT DATE)] {" + std::to_string(field.size() + 6) +
            "}\r\nFrom: " + field + ")\r\n" + parts.sent().at(0).substr(0, 5) + " OK\r\n");
        parts.settle();
        EXPECT_FALSE(result->value().value().at(0).from.empty());
    }
}

TEST_F(HostileImapTest, ReadsAMillionFoundMessages) {
    logIn();
    std::string line = "* SEARCH";
    for (int uid = 1; uid <= 1'000'000; ++uid) line += " " + std::to_string(uid);
    say(line + "\r\nA0002 OK\r\n");
    EXPECT_EQ(parts.end(client.search(false)).value().size(), 1'000'000U);
}

TEST_F(HostileImapTest, FoundMessagesAreOneReplyToo) {
    logIn();
    const std::string line((std::size_t{24} << 20) - 2, '1');
    say(line + "\r\nA0002 OK\r\n" + line + "1\r\n");
    EXPECT_EQ(told(parts.end(client.search(false))), "ok") << "24 MiB with the end of the line";
    EXPECT_EQ(told(parts.end(client.search(false))), tooLongReply);
}

} // namespace
} // namespace morvex
