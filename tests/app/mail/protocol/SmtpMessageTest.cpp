#include "app/mail/protocol/SmtpMessage.h"

#include <gtest/gtest.h>

#include <chrono>
#include <string>

namespace morvex {
namespace {

using namespace std::chrono_literals;

const SmtpMessage plain{.sender = "jana@b.cz",
                        .senderName = "Jana Nová",
                        .recipient = "petr@c.cz",
                        .subject = "Škola",
                        .body = "Ahoj.\n",
                        .date = dateFromSeconds(1'773'478'800), // 9:00 UTC
                        .offset = 1h};

TEST(SmtpMessage, HasItsLinesInThisOrder) {
    EXPECT_EQ(plain.text(), "From: =?UTF-8?B?SmFuYSBOb3bDoQ==?= <jana@b.cz>\r\n"
                            "To: <petr@c.cz>\r\n"
                            "Subject: =?UTF-8?B?xaBrb2xh?=\r\n"
                            "Date: Sat, 14 Mar 2026 10:00:00 +0100\r\n"
                            "MIME-Version: 1.0\r\n"
                            "Content-Type: text/plain; charset=UTF-8\r\n"
                            "Content-Transfer-Encoding: base64\r\n"
                            "\r\n"
                            "QWhvai4K");
}

TEST(SmtpMessage, HasNoMessageId) {
    EXPECT_FALSE(plain.text().contains("Message-I"));
}

TEST(SmtpMessage, EncodesNameAndSubjectAlways) {
    auto message = plain;
    message.senderName = "Jan";
    message.subject = "Hi";
    EXPECT_TRUE(message.text().starts_with("From: =?UTF-8?B?SmFu?= <jana@b.cz>\r\n"));
    EXPECT_TRUE(message.text().contains("\r\nSubject: =?UTF-8?B?SGk=?=\r\n"));
    message.senderName = message.subject = "";
    EXPECT_TRUE(message.text().starts_with("From: =?UTF-8?B?\?= <jana@b.cz>\r\n"));
    EXPECT_TRUE(message.text().contains("\r\nSubject: =?UTF-8?B?\?=\r\n"));
}

TEST(SmtpMessage, NoTextAddsALineToItsHeader) {
    auto message = plain;
    message.senderName = message.subject = message.body = "x\r\nBcc: z@z.cz\r\n\r\n.\r\n";
    const auto text = message.text();
    EXPECT_FALSE(text.contains("Bcc"));
    EXPECT_FALSE(text.contains("\n."));
    EXPECT_EQ(text.find("\r\n\r\n"), text.rfind("\r\n\r\n"));
}

TEST(SmtpMessage, TellsTheDateByTheClocksOfThePlace) {
    const auto dated = [](std::int64_t seconds, std::chrono::seconds offset) {
        auto message = plain;
        message.date = dateFromSeconds(seconds);
        message.offset = offset;
        const auto text = message.text();
        const auto begin = text.find("Date: ") + 6;
        return text.substr(begin, text.find('\r', begin) - begin);
    };
    EXPECT_EQ(dated(0, 0s), "Thu, 1 Jan 1970 00:00:00 +0000");
    EXPECT_EQ(dated(0, -1h), "Wed, 31 Dec 1969 23:00:00 -0100");
    EXPECT_EQ(dated(1'709'251'199, 0s), "Thu, 29 Feb 2024 23:59:59 +0000");
    EXPECT_EQ(dated(1'709'251'199, 5h + 45min), "Fri, 1 Mar 2024 05:44:59 +0545");
    EXPECT_EQ(dated(1'709'251'199, -(9h + 30min)), "Thu, 29 Feb 2024 14:29:59 -0930");
}

TEST(SmtpMessage, BreaksTheBodyInto76Characters) {
    auto message = plain;
    const auto bodyLines = [&](std::size_t bytes) {
        message.body = std::string(bytes, 'x');
        const auto text = message.text();
        return text.substr(text.find("\r\n\r\n") + 4);
    };
    EXPECT_EQ(bodyLines(0), "");
    EXPECT_EQ(bodyLines(57).size(), 76U);
    EXPECT_EQ(bodyLines(58).substr(76), "\r\neA==");
    EXPECT_EQ(bodyLines(114).size(), 76U + 2 + 76);
    EXPECT_EQ(bodyLines(114).substr(76, 2), "\r\n");
}

} // namespace
} // namespace morvex
