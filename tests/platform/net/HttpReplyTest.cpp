#include "tests/platform/net/CannedServer.h"

#include <future>
#include <stop_token>
#include <string>
#include <thread>
#include <vector>

namespace morvex {
namespace {

using HttpReplyTest = CurlHttp;

TEST_F(HttpReplyTest, AReplyHasItsHeaders) {
    CannedServer server("HTTP/1.1 103 Early Hints\r\nLink: early\r\n\r\n"
                        "HTTP/1.1 302 Found\r\nLocation: https://elsewhere.example/\r\nConnection: close\r\n"
                        "Mcp-Session-Id:  a b \r\nX-Empty:\r\nx-twice: 1\r\nX-Twice: 2\r\n"
                        "Content-Length: 0\r\n\r\n");
    auto reply = send({.url = server.url()});
    ASSERT_TRUE(reply) << reply.error().popis().czech();
    EXPECT_EQ(reply->status, 302) << "a redirect is not followed";
    ASSERT_TRUE(reply->header("mcp-session-id"));
    EXPECT_EQ(*reply->header("mcp-session-id"), "a b");
    ASSERT_TRUE(reply->header("X-Empty"));
    EXPECT_EQ(*reply->header("X-Empty"), "");
    EXPECT_EQ(*reply->header("X-TWICE"), "1");
    EXPECT_EQ(reply->header("Link"), nullptr) << "of an interim answer";
    EXPECT_EQ(reply->headers.size(), 7U);
}

TEST_F(HttpReplyTest, OnlyLinesWithANameBetweenStatusAndBodyAreHeaders) {
    CannedServer server("HTTP/1.1 200 OK: all is well\r\nFirst: one\r\n folded: into the first\r\n"
                        "a name: with a blank\r\nConnection: close\r\nTransfer-Encoding: chunked\r\n"
                        "Trailer: Last\r\n\r\n4\r\nbody\r\n0\r\n"
                        "HTTP/1.1 200 OK: a trailer like a status\r\nLast: trailer\r\n\r\n");
    auto reply = send({.url = server.url()});
    ASSERT_TRUE(reply) << reply.error().popis().czech();
    EXPECT_EQ(reply->body, "body");
    std::vector<std::string> names;
    for (const auto& [name, value] : reply->headers) names.push_back(name);
    EXPECT_EQ(names, (std::vector<std::string>{"First", "Connection", "Transfer-Encoding", "Trailer"}));
}

TEST_F(HttpReplyTest, HeadersBeyondTheLimitAreAFailure) {
    const std::string end = "Content-Length: 0\r\nConnection: close\r\n\r\n";
    const auto withHeaders = [&](std::size_t bytes) {
        std::string answer = "HTTP/1.1 200 OK\r\n";
        const auto line = "X: " + std::string(995, 'x') + "\r\n";
        while (answer.size() + line.size() + end.size() <= bytes) answer += line;
        return answer + "Y:" + std::string(bytes - answer.size() - end.size() - 4, 'y') + "\r\n" + end;
    };
    CannedServer most(withHeaders(HttpReply::headersLimit));
    EXPECT_TRUE(send({.url = most.url()}));
    CannedServer more(withHeaders(HttpReply::headersLimit + 1));
    EXPECT_EQ(failure({.url = more.url()}), "Odpověď serveru je příliš dlouhá.");
    CannedServer interim(std::string("HTTP/1.1 103 Early\r\nLink: ") + std::string(40'000, 'x') + "\r\n\r\n" +
                         "HTTP/1.1 103 Early\r\nLink: " + std::string(40'000, 'x') + "\r\n\r\n" +
                         answerWith("200 OK", ""));
    EXPECT_EQ(failure({.url = interim.url()}), "Odpověď serveru je příliš dlouhá.");
}

TEST_F(HttpReplyTest, AnExchangeEndsWhenItsCallerWantsThat) {
    std::promise<void> asked;
    std::promise<void> done;
    TestServer server([&](TestServer::Socket& socket) {
        (void)readRequest(socket);
        asked.set_value();
        done.get_future().wait();
    });
    std::stop_source stop;
    std::thread stopper([&] {
        asked.get_future().wait();
        stop.request_stop();
    });
    EXPECT_EQ(failure({.url = "http://" + server.authority() + "/", .stop = stop.get_token()}),
              "Operace skončila dřív, než dala výsledek.");
    done.set_value();
    stopper.join();
}

TEST_F(HttpReplyTest, AnExchangeThatWasStoppedBeforeEndsToo) {
    CannedServer server(answerWith("200 OK", ""));
    std::stop_source stop;
    stop.request_stop();
    EXPECT_EQ(failure({.url = server.url(), .stop = stop.get_token()}),
              "Operace skončila dřív, než dala výsledek.");
    EXPECT_TRUE(server.asked().empty());
}

} // namespace
} // namespace morvex
