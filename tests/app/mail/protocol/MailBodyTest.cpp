#include "app/mail/protocol/MailBody.h"

#include "shared/base/Base64.h"

#include <gtest/gtest.h>

#include <optional>
#include <string>

namespace morvex {
namespace {

const std::string czech = "Příliš žluťoučký kůň úpěl ďábelské ódy.\n";

std::string inBase64(std::string_view text) {
    return base64Encode(asBytes(text));
}

TEST(MailBody, KeepsAPlainText) {
    for (const auto& text : {std::string(), std::string("Ahoj.\n\n  Jana \n"), czech})
        EXPECT_EQ(decodedBody(text), text);
}

TEST(MailBody, DecodesBase64HoweverItsLinesEnd) {
    const auto digits = inBase64(czech);
    ASSERT_GT(digits.size(), 40U);
    EXPECT_EQ(decodedBody(digits), czech);
    EXPECT_EQ(decodedBody(" \n" + digits.substr(0, 30) + "\n" + digits.substr(30) + "\n\n \t"), czech);
    EXPECT_EQ(decodedBody(digits.substr(0, 30) + "\r\n" + digits.substr(30) + "\r\n"), czech);
    EXPECT_EQ(decodedBody(inBase64("bytes that are no text: \xe8\xff")),
              "bytes that are no text: \uFFFD\uFFFD");
}

TEST(MailBody, TakesNoTextBelow25CharactersForBase64) {
    const auto shorter = inBase64("eighteen letters..");
    const auto longer = inBase64("nineteen letters...");
    ASSERT_EQ(shorter.size(), 24U);
    ASSERT_EQ(longer.size(), 28U);
    EXPECT_EQ(decodedBody(shorter), shorter);
    EXPECT_EQ(decodedBody(shorter + "\n \n"), shorter + "\n \n");
    EXPECT_EQ(decodedBody(longer), "nineteen letters...");
}

TEST(MailBody, TakesALongWordOfTheseDigitsForBase64) {
    std::string decoded;
    for (int count = 0; count < 7; ++count) decoded += "i\uFFFD\uFFFD";
    EXPECT_EQ(decodedBody(std::string(28, 'a')), decoded);
}

TEST(MailBody, KeepsWhatOnlyLooksLikeBase64) {
    const std::string oneTooMany(29, 'a');
    EXPECT_EQ(decodedBody(oneTooMany), oneTooMany);
    const auto words = inBase64(czech) + " " + inBase64(czech);
    EXPECT_EQ(decodedBody(words.substr(0, 70)), words.substr(0, 70)) << "a blank is none of its digits";
}

TEST(MailBody, DecodesQuotedPrintable) {
    EXPECT_EQ(decodedBody("P=C5=99=C3=\n=ADklad 1+1=3D2\n"), "Příklad 1+1=2\n");
    EXPECT_EQ(decodedBody("1+1=2"), "1+1=2");
    EXPECT_EQ(decodedBody("=E8=FF"), "\uFFFD\uFFFD");
}

std::optional<std::string> fetched(const std::string& literal,
                                   const std::string& begin = "* 1 FETCH (UID 7 ") {
    return fetchedBody(begin + "BODY[TEXT] {" + std::to_string(literal.size()) + "}\n" + literal + "\n)\n");
}

TEST(MailBody, IsWhatStandsBetweenTheLinesOfTheServer) {
    EXPECT_EQ(fetched("Ahoj.\n\nJana\n"), "Ahoj.\n\nJana\n");
    EXPECT_EQ(fetched("Ahoj.\r\n\r\nJana\r\n"), "Ahoj.\n\nJana\n") << "returns are stripped";
    EXPECT_EQ(fetched("Ahoj."), "Ahoj.");
    EXPECT_EQ(fetched(inBase64(czech) + "\n"), czech);
    EXPECT_EQ(fetched("\xe8\xff"), "\uFFFD\uFFFD");
    EXPECT_EQ(fetchedBody("* 3 EXISTS\n* 1 FETCH (UID 7 Body[Text] {1}\nx\n)\n* 4 EXISTS\n"), "x");
}

TEST(MailBody, KeepsThePartsOfAMessageWithTheirBoundaries) {
    const std::string parts = "--x\nContent-Type: text/plain\n\nAhoj.\n--x--\n";
    EXPECT_EQ(fetched(parts), parts);
}

TEST(MailBody, LinesThatBeginLikeThoseOfTheServerVanish) {
    EXPECT_EQ(fetched("Seznam:\n* mléko\n* FETCH\n)\n) chleba\n - (máslo)\n *ne"),
              "Seznam:\n - (máslo)\n *ne");
}

TEST(MailBody, OfLengthZeroIsEmpty) {
    EXPECT_EQ(fetched(""), "");
    EXPECT_EQ(fetchedBody("* 1 FETCH (UID 7 BODY[TEXT] NIL)\n"), "");
    EXPECT_EQ(fetchedBody("* 1 FETCH (UID 7 BODY[TEXT] \"\")\n"), "");
}

TEST(MailBody, IsNothingWhereTheReplyBringsNone) {
    for (const auto* lines :
         {"", "* 1 EXISTS\n", "* 5 FETCH (UID 7 FLAGS (\\Seen))\n", "FETCH BODY[TEXT]\n", "* BODY[TEXT]\n"})
        EXPECT_EQ(fetchedBody(lines), std::nullopt) << lines;
}

} // namespace
} // namespace morvex
