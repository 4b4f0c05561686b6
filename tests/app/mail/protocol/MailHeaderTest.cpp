#include "app/mail/protocol/MailHeader.h"

#include <gtest/gtest.h>

#include <string>
#include <utility>
#include <vector>

namespace morvex {
namespace {

using namespace std::string_literals;

TEST(MailHeader, DecodesEncodedWords) {
    const std::vector<std::pair<std::string, std::string>> rows{
        {"", ""},
        {"plain", "plain"},
        {"=?UTF-8?Q?Ji=C5=99=C3=AD_Nov=C3=A1k?= <j@b.cz>", "Jiří Novák <j@b.cz>"},
        {"=?utf-8?q?a_b?=", "a b"},
        {"=?UTF-8?B?xaBrb2xh?=", "Škola"},
        {"=?UTF-8?b?xaBrb2xh?= a =?UTF-8?B?xaBrb2xh?=", "Škola a Škola"},
        {"Re: =?UTF-8?Q?\?= x", "Re:  x"},
        {"=?UTF-8?B?\?=", ""},
        {"=?UTF-8?Q?a=3D=3Fb?=", "a=?b"},
    };
    for (const auto& [field, text] : rows) EXPECT_EQ(decodedHeader(field), text) << field;
}

TEST(MailHeader, IgnoresTheCharsetOfAWord) {
    EXPECT_EQ(decodedHeader("=?ISO-8859-2?Q?=E8?="), "\uFFFD");
    EXPECT_EQ(decodedHeader("=?x?Q?=C4=8D?="), "č");
}

TEST(MailHeader, KeepsTheBlankBetweenTwoWords) {
    EXPECT_EQ(decodedHeader("=?UTF-8?Q?a?= =?UTF-8?Q?b?="), "a b");
    EXPECT_EQ(decodedHeader("=?UTF-8?Q?a?==?UTF-8?Q?b?="), "ab");
}

TEST(MailHeader, KeepsAWordThatCannotBeDecoded) {
    for (const auto* field :
         {"=?UTF-8?B?x?=", "=?UTF-8?B?x*==?=", "=?UTF-8?X?abcd?=", "=??Q?a?=", "=?UTF-8?Q?a", "=?UTF-8?Q?a?",
          "=?UTF-8?Q", "=?UTF-8?", "=?UTF-8", "=?", "=?UTF-8?QQ?a?=", "=?UTF-8?Q?a?b?=", "=?UTF-8??a?="})
        EXPECT_EQ(decodedHeader(field), field);
}

TEST(MailHeader, FindsAWordBehindTheBeginOfAnother) {
    EXPECT_EQ(decodedHeader("=?=?UTF-8?Q?a?="), "=?a");
    EXPECT_EQ(decodedHeader("=?x =?UTF-8?Q?a?="), "=?x a");
    EXPECT_EQ(decodedHeader("=?x?y?=?UTF-8?Q?a?="), "=?x?y?a");
    EXPECT_EQ(decodedHeader("=?UTF-8?B?x?= =?UTF-8?Q?a?="), "=?UTF-8?B?x?= a");
}

/// Headers as the lines of a reply.
std::vector<MacIMAPMessage> fetched(const std::string& lines) {
    return fetchedMessages(lines, {1, 2, 3, 7, 4'294'967'295});
}

std::string header(const std::string& fields, const std::string& begin = "* 1 FETCH (UID 7 FLAGS ()") {
    return begin + " BODY[HEADER.FIELDS (FROM SUBJECT DATE)] {9}\n" + fields + "\n)\n";
}

TEST(MailHeader, ReadsTheFieldsOfEachMessage) {
    const auto messages =
        fetched(header("From: =?UTF-8?Q?Ji=C5=99=C3=AD?= <j@b.cz>\nSubject:  ahoj \t\nDate: Sat, 14 Mar 2026 "
                       "10:00:00 +0100\n") +
                header("DATE:x\nsubject:y\nfRoM:z\n", "* 2 FETCH (FLAGS (\\Answered \\Seen) UID 4294967295"));
    ASSERT_EQ(messages.size(), 2U);
    EXPECT_EQ(messages[0], (MacIMAPMessage{4'294'967'295, "z", "y", "x", true}));
    EXPECT_EQ(messages[1],
              (MacIMAPMessage{7, "Jiří <j@b.cz>", "ahoj", "Sat, 14 Mar 2026 10:00:00 +0100", false}));
}

TEST(MailHeader, HasWordsForMissingFieldsAlone) {
    EXPECT_EQ(fetched(header("")).at(0),
              (MacIMAPMessage{7, "(neznámý odesílatel)", "(bez předmětu)", "", false}));
    EXPECT_EQ(fetched(header("From:\nSubject:\nDate:\n")).at(0), (MacIMAPMessage{7, "", "", "", false}));
    EXPECT_EQ(fetched(header("X-From: a\n Subject: b\nFrom : c\n")).at(0).from, "(neznámý odesílatel)");
}

TEST(MailHeader, CutsAFoldedField) {
    const auto messages =
        fetched(header("Subject: =?UTF-8?Q?prvn=C3=AD?=\n =?UTF-8?Q?druh=C3=BD?=\n\tdalší\n"));
    EXPECT_EQ(messages.at(0).subject, "první");
}

TEST(MailHeader, ListsTheHighestUidFirst) {
    std::vector<std::uint32_t> uids;
    for (const auto& message : fetched(header("", "* 1 FETCH (UID 2") + header("", "* 2 FETCH (UID 3") +
                                       header("", "* 3 FETCH (UID 1")))
        uids.push_back(message.uid);
    EXPECT_EQ(uids, (std::vector<std::uint32_t>{3, 2, 1}));
}

TEST(MailHeader, DropsAMessageWithoutAUid) {
    for (const auto* begin : {"* 1 FETCH (FLAGS ()", "* 1 FETCH (UID", "* 1 FETCH (UID x", "* 1 FETCH (UID7",
                              "* 1 FETCH (XUID 7", "* 1 FETCH (UID_7 7", "* 1 FETCH (UID -7",
                              "* 1 FETCH (UID 4294967303", "* 1 FETCH (UID 99999999999999999999"})
        EXPECT_TRUE(fetched(header("From: a\n", begin)).empty()) << begin;
    EXPECT_EQ(fetched(header("", "* 1 FETCH (XUID 3 UID \t 7")).at(0).uid, 7U);
}

TEST(MailHeader, DropsAMessageThatNobodyAskedFor) {
    const auto messages = fetched(header("From: a\n", "* 1 FETCH (UID 4") + header("From: b\n"));
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0].from, "b");
}

TEST(MailHeader, TakesNewsOfAMessageToItsHeader) {
    const auto messages = fetched(header("From: b\n") + "* 1 FETCH (UID 7 FLAGS (\\Seen))\n");
    ASSERT_EQ(messages.size(), 1U);
    EXPECT_EQ(messages[0], (MacIMAPMessage{7, "b", "(bez předmětu)", "", true}));
}

TEST(MailHeader, LinesOutsideOfMessagesSayNothing) {
    EXPECT_TRUE(fetched("From: a\n* OK From: b\n* 5 EXISTS\n\n").empty());
}

TEST(MailHeader, RepairsBytesThatAreNoText) {
    EXPECT_EQ(fetched(header("From: \xe8\xff\n")).at(0).from, "\uFFFD\uFFFD");
}

} // namespace
} // namespace morvex
