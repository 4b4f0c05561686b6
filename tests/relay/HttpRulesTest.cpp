#include "relay/HttpReply.h"
#include "tests/relay/RunningRelay.h"
#include "tests/support/Effort.h"
#include "tests/support/RelayClient.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

using namespace morvex;

namespace {

constexpr std::string_view host = "Host: localhost\r\n";
constexpr std::string_view json = "Content-Type: application/json\r\n";
constexpr std::string_view start = "POST /v1/pair/create HTTP/1.1\r\n";

/// A call that the relay would answer with 400 and the words for content that it does not understand, since
/// its content is `{}`.
std::string callWith(std::string_view headers, std::string_view content = "") {
    return std::string{start} + std::string{headers} + std::string{json} + "\r\n" + std::string{content};
}

std::string with(std::string_view headers, std::string_view content = "") {
    return callWith(std::string{host} + std::string{headers}, content);
}

unsigned statusOf(std::string_view answer) {
    return answer.size() < 12 ? 0U : static_cast<unsigned>(std::stoul(std::string{answer.substr(9, 3)}));
}

struct HttpRulesTest : testing::Test {
    RunningRelay relay;
    TestPair pair;
    const std::string content = TestPair::create(pair.mac);
    const std::string length = "Content-Length: " + std::to_string(content.size()) + "\r\n";

    /// In chunks of one byte.
    [[nodiscard]] std::string chunks() const {
        std::string bytes;
        for (const char byte : content) bytes += std::string{"1;x=\"y\"\r\n"} + byte + "\r\n";
        return bytes + "0\r\nX-Trailer: x\r\n\r\n";
    }
};

struct Row {
    const char* what;
    std::string bytes;
};

} // namespace

TEST_F(HttpRulesTest, AnswersEveryRightFormOfACall) {
    const std::string absolute = "POST http://localhost:8787/v1/pair/create HTTP/1.1\r\n";
    const std::vector<Row> rows{
        {"plain", with(length, content)},
        {"a host with a port", callWith("Host: relay.example:8787\r\n" + length, content)},
        {"a host that is an address", callWith("Host: [2001:db8::1]:8787\r\n" + length, content)},
        {"no host to name", callWith("Host:\r\n" + length, content)},
        {"HTTP/1.0 without a host",
         "POST /v1/pair/create HTTP/1.0\r\n" + std::string{json} + length + "\r\n" + content},
        {"the absolute form", absolute + std::string{host} + std::string{json} + length + "\r\n" + content},
        {"chunks", with("Transfer-Encoding: chunked\r\n", chunks())},
        {"chunks in capitals", with("Transfer-Encoding: CHUNKED\r\n", chunks())},
        {"blanks around a value", callWith("Host: \t localhost \t\r\n" + length, content)},
        {"an unknown header", with("X-Unknown: \x80\xff\r\n" + length, content)},
    };
    for (const auto& row : rows) EXPECT_EQ(statusOf(exchange(relay.port(), row.bytes)), 200U) << row.what;
}

TEST_F(HttpRulesTest, RefusesWhatTwoReadersCouldTakeForTwoThings) {
    const std::string chunked = "Transfer-Encoding: chunked\r\n";
    const std::vector<Row> rows{
        {"no host", callWith(length, content)},
        {"two hosts", with("Host: localhost\r\n" + length, content)},
        {"a host with a blank", callWith("Host: a b\r\n" + length, content)},
        {"a host with a path", callWith("Host: a/b\r\n" + length, content)},
        {"a host with a user", callWith("Host: u@a\r\n" + length, content)},
        {"a host with a port that is none", callWith("Host: a:b\r\n" + length, content)},
        {"a host with two ports", callWith("Host: a:1:2\r\n" + length, content)},
        {"a host with an open bracket", callWith("Host: [::1\r\n" + length, content)},
        {"a length and chunks", with(length + chunked, chunks())},
        {"chunks and a length", with(chunked + length, chunks())},
        {"two lengths", with(length + "Content-Length: 5\r\n", content)},
        {"the same length twice", with(length + length, content)},
        {"a list of lengths", with("Content-Length: 2, 2\r\n", content)},
        {"a length with a sign", with("Content-Length: +2\r\n", content)},
        {"a negative length", with("Content-Length: -2\r\n", content)},
        {"a length in hexadecimal digits", with("Content-Length: 0x2\r\n", content)},
        {"a length beyond 64 bits", with("Content-Length: 18446744073709551618\r\n", content)},
        {"an empty length", with("Content-Length: \r\n", content)},
        {"another coding", with("Transfer-Encoding: gzip\r\n", content)},
        {"another coding and a length", with("Transfer-Encoding: gzip\r\n" + length, content)},
        {"no coding", with("Transfer-Encoding: \r\n" + length, content)},
        {"the coding of nothing", with("Transfer-Encoding: identity\r\n" + length, content)},
        {"chunks that are coded again", with("Transfer-Encoding: chunked, gzip\r\n", chunks())},
        {"chunks of chunks", with("Transfer-Encoding: chunked, chunked\r\n", chunks())},
        {"chunks of chunks in two lines", with(chunked + chunked, chunks())},
        {"chunks with a parameter", with("Transfer-Encoding: chunked;x=y\r\n", chunks())},
        {"chunks with a vertical tab", with("Transfer-Encoding: \vchunked\r\n", chunks())},
        {"chunks in HTTP/1.0",
         "POST /v1/pair/create HTTP/1.0\r\n" + std::string{json} + chunked + "\r\n" + chunks()},
        {"a chunk without a size", with(chunked, "\r\n{}\r\n0\r\n\r\n")},
        {"a chunk with a sign", with(chunked, "+2\r\n{}\r\n0\r\n\r\n")},
        {"a chunk that is longer than it says", with(chunked, "1\r\n{}\r\n0\r\n\r\n")},
        {"a size that ends with a line feed", with(chunked, "2\n{}\r\n0\r\n\r\n")},
        {"a blank before the colon", with("Content-Length : 2\r\n", content)},
        {"a header without a name", with(": x\r\n" + length, content)},
        {"a header without a colon", with("Content-Length\r\n", content)},
        {"a name with a line feed", with("X\nY: x\r\n" + length, content)},
        {"a value with a line feed", with("X: x\nTransfer-Encoding: chunked\r\n" + length, content)},
        {"a value with a carriage return", with("X: x\ry\r\n" + length, content)},
        {"a value with a zero", with(std::string{"X: a\0b\r\n", 8} + length, content)},
        {"a header that begins with a blank",
         std::string{start} + " X: x\r\n" + std::string{host} + length + "\r\n"},
        {"a target without a slash", "POST v1/pair/create HTTP/1.1\r\n" + std::string{host} + "\r\n"},
        {"an authority as target", "CONNECT localhost:80 HTTP/1.1\r\n" + std::string{host} + "\r\n"},
        {"an asterisk", "POST * HTTP/1.1\r\n" + std::string{host} + "\r\n"},
        {"an absolute form without a host",
         "POST http:///v1/pair/create HTTP/1.1\r\n" + std::string{host} + "\r\n"},
        {"two blanks before the target", "POST  /v1/pair/create HTTP/1.1\r\n" + std::string{host} + "\r\n"},
        {"a method that is no word", "P(ST /v1/pair/create HTTP/1.1\r\n" + std::string{host} + "\r\n"},
        {"no version", "POST /v1/pair/create\r\n" + std::string{host} + "\r\n"},
        {"another protocol", "POST /v1/pair/create ICAP/1.1\r\n" + std::string{host} + "\r\n"},
        {"HTTP/2.0", "POST /v1/pair/create HTTP/2.0\r\n" + std::string{host} + "\r\n"},
    };
    for (const auto& row : rows) EXPECT_EQ(statusOf(exchange(relay.port(), row.bytes)), 400U) << row.what;
    tell("requests that two readers could take for two things", rows.size(), "all refused");
}

TEST_F(HttpRulesTest, SaysThatItDoesNotUnderstandACodingBelowTheChunks) {
    for (const std::string headers : {"Transfer-Encoding: gzip, chunked\r\n",
                                      "Transfer-Encoding: gzip\r\nTransfer-Encoding: chunked\r\n"})
        EXPECT_EQ(statusOf(exchange(relay.port(), with(headers, chunks()))), 501U) << headers;
}

// RFC 9112, section 5.2: a folded line is refused or read as if its line break were blanks.
TEST_F(HttpRulesTest, ReadsAFoldedLineAsOne) {
    EXPECT_EQ(
        statusOf(exchange(relay.port(), with("X: x\r\n Transfer-Encoding: gzip\r\n" + length, content))),
        200U);
}

TEST_F(HttpRulesTest, KeepsLittleOfAChunkThatAnnouncesItselfWithoutEnd) {
    const std::string chunked = "Transfer-Encoding: chunked\r\n";
    const std::string endless(64 * kibibyte, 'x');
    EXPECT_EQ(statusOf(exchange(relay.port(), with(chunked, "1;" + endless))), 413U);
    EXPECT_EQ(statusOf(exchange(relay.port(), with(chunked, "0\r\nX: " + endless))), 413U);
}

TEST_F(HttpRulesTest, TellsAClientThatWaitsToSendItsContent) {
    RawSocket socket{relay.port()};
    socket.write(with("Expect: 100-continue\r\n" + length));
    EXPECT_EQ(socket.readHead(), "HTTP/1.1 100 Continue\r\n\r\n");
    socket.write(content);
    EXPECT_EQ(statusOf(socket.readToTheEnd()), 200U);
}

TEST_F(HttpRulesTest, TellsAClientThatWaitsToSendItsContentAtOnceWhenItIsTooMuch) {
    RawSocket socket{relay.port()};
    socket.write(with("Expect: 100-continue\r\nContent-Length: 1000000\r\n"));
    EXPECT_EQ(statusOf(socket.readHead()), 413U);
}

TEST_F(HttpRulesTest, SendsNoContentToAHead) {
    const auto answer =
        exchange(relay.port(), "HEAD /v1/pair/create HTTP/1.1\r\n" + std::string{host} + "\r\n");
    EXPECT_EQ(statusOf(answer), 405U);
    EXPECT_THAT(answer, testing::HasSubstr("Allow: POST\r\n"));
    EXPECT_THAT(answer, testing::ContainsRegex("Content-Length: [1-9]"));
    EXPECT_THAT(answer, testing::EndsWith("\r\n\r\n"));
}

TEST_F(HttpRulesTest, SendsNoContentToAHeadThatIsBroken) {
    const auto answer = exchange(relay.port(), "HEAD /v1/pair/create HTTP/1.1\r\nHost\r\n\r\n");
    EXPECT_EQ(statusOf(answer), 400U);
    EXPECT_THAT(answer, testing::EndsWith("\r\n\r\n"));
}

TEST_F(HttpRulesTest, SaysWhenItAnsweredAndNotWithWhat) {
    for (const auto& bytes : {with(length, content), with("Content-Length: x\r\n")}) {
        const auto answer = exchange(relay.port(), bytes);
        EXPECT_THAT(answer,
                    testing::ContainsRegex("Date: [A-Z][a-z][a-z], [0-3][0-9] [A-Z][a-z][a-z] 20[0-9][0-9] "
                                           "[0-2][0-9]:[0-5][0-9]:[0-5][0-9] GMT"));
        EXPECT_THAT(answer, testing::HasSubstr("Connection: close\r\n"));
        EXPECT_THAT(answer, testing::Not(testing::HasSubstr("Server:")));
    }
}

TEST(HttpDate, WritesTheExamplesOfTheStandard) {
    EXPECT_EQ(httpDate(dateFromSeconds(784'111'777)), "Sun, 06 Nov 1994 08:49:37 GMT");
    EXPECT_EQ(httpDate(dateFromSeconds(0)), "Thu, 01 Jan 1970 00:00:00 GMT");
    EXPECT_EQ(httpDate(dateFromSeconds(1'709'164'799)), "Wed, 28 Feb 2024 23:59:59 GMT");
}
