#include "app/mail/protocol/ImapReply.h"

#include "app/mail/protocol/ReplyLines.h"
#include "tests/app/mail/protocol/MailParts.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace morvex {
namespace {

constexpr auto tooLong = "Odpověď serveru je příliš dlouhá.";

/// What the reply wants after a line.
std::string after(ImapReply& reply, std::string_view line) {
    const auto literal = reply.addLine(line);
    if (!literal) return literal.error().popis().czech();
    if (*literal) return "literal of " + std::to_string(**literal);
    return reply.isComplete() ? "end" : "line";
}

TEST(ImapReply, CollectsLinesUpToTheOneWithItsTag) {
    ImapReply reply("A0002");
    for (const auto* line :
         {"* 3 EXISTS", "", "A0001 OK", "A0002", "A00021 OK", " A0002 OK", "+ go on", "a0002 OK"})
        EXPECT_EQ(after(reply, line), "line") << line;
    EXPECT_EQ(after(reply, "A0002  ok \tdone "), "end");
    EXPECT_TRUE(reply.isOk());
    EXPECT_EQ(reply.outcome(), "ok \tdone");
    EXPECT_EQ(reply.takeLines(), "* 3 EXISTS\n\nA0001 OK\nA0002\nA00021 OK\n A0002 OK\n+ go on\na0002 OK\n");
}

TEST(ImapReply, IsGoodIfItsOutcomeBeginsWithOk) {
    for (const auto& [outcome, isOk] :
         std::vector<std::pair<std::string, bool>>{{"OK", true},
                                                   {"oK [READ-WRITE] Done", true},
                                                   {"NO OK", false},
                                                   {"BAD", false},
                                                   {"BYE", false},
                                                   {"O", false},
                                                   {"", false}}) {
        ImapReply reply("A0001");
        EXPECT_FALSE(reply.isOk());
        EXPECT_EQ(after(reply, "A0001 " + outcome), "end");
        EXPECT_EQ(reply.isOk(), isOk) << outcome;
    }
}

TEST(ImapReply, WantsALiteralBehindTheLineThatAnnouncesIt) {
    for (const auto& [line, wanted] : std::vector<std::pair<std::string, std::string>>{
             {"* 1 FETCH (BODY[TEXT] {12}", "literal of 12"},
             {"{0}", "literal of 0"},
             {"a{1}{0002}", "literal of 2"},
             {"{16777216}", "literal of 16777216"},
             {"{12} ", "line"},
             {"{}", "line"},
             {"{1a}", "line"},
             {"{+1}", "line"},
             {"{-1}", "line"},
             {"{1+}", "line"},
             {"12}", "line"},
             {"A0001 OK {1}", "literal of 1"},
         }) {
        ImapReply reply("A0001");
        EXPECT_EQ(after(reply, line), wanted) << line;
        EXPECT_EQ(reply.takeLines(), line + "\n") << "the announcing line is collected";
    }
}

TEST(ImapReply, CollectsTheLinesOfALiteral) {
    ImapReply reply("A0001");
    ASSERT_TRUE(reply.addLiteral("a\r\n\r\nA0001 OK\r\n"));
    ASSERT_TRUE(reply.addLiteral(""));
    ASSERT_TRUE(reply.addLiteral("b"));
    EXPECT_FALSE(reply.isComplete()) << "a literal never ends a reply";
    EXPECT_EQ(reply.takeLines(), "a\r\n\r\nA0001 OK\r\n\n\nb\n");
}

TEST(ReplyLines, HaveNoReturnsAtTheirEnds) {
    std::vector<std::string> lines;
    ReplyLines reply("a\r\n\r\n\nb\rc\r\r\nd\r");
    while (const auto line = reply.next()) lines.emplace_back(*line);
    EXPECT_EQ(lines, (std::vector<std::string>{"a", "", "", "b\rc", "d"}));
}

TEST(ImapReply, RefusesALiteralOfMoreThan16MiB) {
    for (const auto* line : {"{16777217}", "{10000000000}", "{18446744073709551616}",
                             "{99999999999999999999999999999999999999}"}) {
        ImapReply reply("A0001");
        EXPECT_EQ(after(reply, line), tooLong) << line;
    }
}

TEST(ImapReply, RefusesMoreThan24MiBInAll) {
    ImapReply reply("A0001");
    const std::string mebibyte((std::size_t{1} << 20) - 1, 'x');
    for (int count = 0; count < 8; ++count) ASSERT_EQ(after(reply, mebibyte), "line");
    ASSERT_TRUE(reply.addLiteral(std::string(ImapReply::longestLiteral - 1, 'x'))) << "24 MiB with its end";
    EXPECT_EQ(told(reply.addLiteral("")), tooLong);
    EXPECT_EQ(after(reply, ""), tooLong);
    EXPECT_EQ(after(reply, "A0001 OK"), "end");
}

TEST(ImapReply, KeepsOf64KiBOfItsOutcome) {
    ImapReply reply("A0001");
    EXPECT_EQ(after(reply, "A0001 NO " + std::string(1'000'000, 'x')), "end");
    EXPECT_EQ(reply.outcome().size(), 65'536U);
}

} // namespace
} // namespace morvex
