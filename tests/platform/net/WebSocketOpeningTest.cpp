#include "shared/base/SystemTrouble.h"
#include "tests/platform/net/GivenAuthority.h"
#include "tests/platform/net/SlowNames.h"
#include "tests/platform/net/WebSocketTest.h"
#include "tests/support/TestAuthority.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/read_until.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/asio/write.hpp>
#include <boost/beast/core/flat_buffer.hpp>
#include <boost/beast/http/read.hpp>
#include <boost/beast/http/string_body.hpp>
#include <boost/beast/ssl/ssl_stream.hpp>
#include <boost/beast/websocket/ssl.hpp>

#include <stop_token>
#include <string>

namespace morvex {
namespace {

namespace asio = boost::asio;
namespace http = boost::beast::http;
using namespace std::chrono_literals;

http::request<http::string_body> readRequest(TestServer::Socket& socket) {
    boost::beast::flat_buffer buffer;
    http::request<http::string_body> request;
    http::read(socket, buffer, request);
    return request;
}

/// Answers the request for an upgrade with these bytes.
TestServer::Script answer(std::string bytes) {
    return [bytes = std::move(bytes)](TestServer::Socket& socket) {
        readRequest(socket);
        asio::write(socket, asio::buffer(bytes));
        readToTheEnd(socket);
    };
}

/// A WebSocket server over TLS that sends one message.
TestServer::Script greetOverTls(TestAuthority::Identity identity) {
    return [identity = std::move(identity)](TestServer::Socket& socket) {
        asio::ssl::context context(asio::ssl::context::tls_server);
        context.use_certificate_chain(asio::buffer(identity.certificate));
        context.use_private_key(asio::buffer(identity.key), asio::ssl::context::pem);
        boost::beast::websocket::stream<asio::ssl::stream<TestServer::Socket&>> peer(socket, context);
        peer.next_layer().handshake(asio::ssl::stream_base::server);
        auto* name = SSL_get_servername(peer.next_layer().native_handle(), TLSEXT_NAMETYPE_host_name);
        peer.accept();
        peer.write(asio::buffer(std::string("name asked for: ") + (name ? name : "none")));
        readToTheEnd(socket);
    };
}

class WebSocketOpening : public WebSocketTest {
  protected:
    void trust(const TestAuthority& authority) {
        client_ = std::make_unique<BeastWebSocketClient>(NetworkLimits{}, authority.certificate());
    }

    void limitTo(std::chrono::milliseconds opening) {
        client_ = std::make_unique<BeastWebSocketClient>(NetworkLimits{.opening = opening});
    }

    std::string greetingFrom(const std::string& url) {
        auto socket = await(executor_, client_->connect({url}, {}));
        if (!socket) return socket.error().popis().czech();
        return await(executor_, (*socket)->receive()).value().data;
    }
};

TEST_F(WebSocketOpening, AsksForTheTargetOfTheAddress) {
    std::promise<http::request<http::string_body>> asked;
    TestServer server([&asked](TestServer::Socket& socket) {
        asked.set_value(readRequest(socket));
        readToTheEnd(socket);
    });
    auto attempt = start(executor_, client_->connect({"ws://" + server.authority() + "/v1/ws?v=1.4"}, {}));
    auto request = end(asked.get_future());
    EXPECT_EQ(request.target(), "/v1/ws?v=1.4");
    EXPECT_EQ(request[http::field::host], server.authority());
    EXPECT_EQ(request.count(http::field::sec_websocket_extensions), 0U);
    client_.reset();
    EXPECT_NE(failureOf(end(std::move(attempt))), "");
}

TEST_F(WebSocketOpening, SendsTheHeadersOfTheRequest) {
    std::promise<http::request<http::string_body>> asked;
    TestServer server([&asked](TestServer::Socket& socket) { asked.set_value(readRequest(socket)); });
    const auto opened =
        await(executor_, client_->connect({.url = "ws://" + server.authority(),
                                           .headers = {{"Authorization", "Bearer abc"}, {"X-Empty", ""}}},
                                          {}));
    EXPECT_FALSE(opened);
    auto request = end(asked.get_future());
    EXPECT_EQ(request[http::field::authorization], "Bearer abc");
    EXPECT_EQ(request.count("X-Empty"), 1U);
    EXPECT_EQ(request.count(http::field::sec_websocket_key), 1U);
}

TEST_F(WebSocketOpening, AHeaderThatBreaksTheRequestIsRefusedAndNothingSent) {
    TestServer server(answer("HTTP/1.1 200 OK\r\n\r\n"));
    for (const auto& header : std::vector<std::pair<std::string, std::string>>{
             {"", "x"}, {"a b", "x"}, {"a:", "x"}, {"A", "x\r\nB: y"}, {"A", "x\ny"}, {"A", {"\0", 1}}})
        EXPECT_EQ(
            failureOf(await(
                executor_, client_->connect({.url = "ws://" + server.authority(), .headers = {header}}, {}))),
            "Hlavička požadavku má neplatné znaky.");
    EXPECT_EQ(server.connections(), 0);
}

TEST_F(WebSocketOpening, HeadersThatAreTooLongAreRefusedAndNothingSent) {
    TestServer server([](TestServer::Socket& socket) {
        std::string request;
        asio::read_until(socket, asio::dynamic_buffer(request), "\r\n\r\n");
        asio::write(socket,
                    asio::buffer(std::string("HTTP/1.1 401 Unauthorized\r\nContent-Length: 0\r\n\r\n")));
        readToTheEnd(socket);
    });
    const std::string half(std::size_t{16} * 1024 - 1, 'x');
    const auto openWith = [&](const std::string& more) {
        return failureOf(await(executor_, client_->connect({.url = "ws://" + server.authority(),
                                                            .headers = {{"A", half}, {"B", half + more}}},
                                                           {})));
    };
    EXPECT_EQ(openWith("y"), "Hlavička požadavku je příliš dlouhá.");
    EXPECT_EQ(server.connections(), 0);
    EXPECT_EQ(openWith(""), "Server odmítl WebSocket (HTTP 401).");
}

TEST_F(WebSocketOpening, AStopDuringTheLookUpConnectsToNobody) {
    TestServer server(answer("HTTP/1.1 401 Unauthorized\r\nContent-Length: 0\r\n\r\n"));
    SlowName slow;
    std::stop_source stop;
    const auto port = server.authority("");
    auto attempt =
        start(executor_, client_->connect({.url = "ws://" + SlowName::host + port}, stop.get_token()));
    slow.waitForLookUp();
    stop.request_stop();
    EXPECT_NE(failureOf(end(std::move(attempt))), "");
    slow.find();
    client_.reset();
    EXPECT_EQ(server.connections(), 0);
}

TEST_F(WebSocketOpening, AnHttpAnswerInsteadOfTheUpgradeIsAFailureWithItsStatus) {
    struct Row {
        const char* answer;
        const char* status;
    };

    for (const auto& row : {
             Row{"HTTP/1.1 401 Unauthorized\r\nContent-Length: 2\r\n\r\nno", "401"},
             Row{"HTTP/1.1 302 Found\r\nLocation: ws://127.0.0.1:1/\r\nContent-Length: 0\r\n\r\n", "302"},
             Row{"HTTP/1.1 200 OK\r\nContent-Length: 5\r\n\r\nhello", "200"},
             Row{"HTTP/1.1 503 Service Unavailable\r\nContent-Length: 0\r\n\r\n", "503"},
         }) {
        TestServer server(answer(row.answer));
        EXPECT_EQ(connectFailure("ws://" + server.authority()),
                  "Server odmítl WebSocket (HTTP " + std::string(row.status) + ").");
        EXPECT_EQ(server.connections(), 1) << row.status;
    }
}

TEST_F(WebSocketOpening, AnAnswerThatProvesNothingIsRefused) {
    TestServer server(
        answer("HTTP/1.1 101 Switching Protocols\r\nUpgrade: websocket\r\nConnection: Upgrade\r\n"
               "Sec-WebSocket-Accept: AAAAAAAAAAAAAAAAAAAAAAAAAAA=\r\n\r\n"));
    EXPECT_NE(connectFailure("ws://" + server.authority()), "");
}

TEST_F(WebSocketOpening, GarbageIsAFailure) {
    TestServer server(answer("220 mail.example ESMTP\r\n\r\n"));
    EXPECT_EQ(connectFailure("ws://" + server.authority()), popis(SystemTrouble::badAnswer).czech());
}

TEST_F(WebSocketOpening, AnEndlessAnswerIsAFailure) {
    TestServer server([](TestServer::Socket& socket) {
        readRequest(socket);
        asio::write(socket, asio::buffer(std::string("HTTP/1.1 200 OK\r\n\r\n")));
        for (std::string body(64 * 1024, 'x');;) asio::write(socket, asio::buffer(body));
    });
    EXPECT_NE(connectFailure("ws://" + server.authority()), "");
}

TEST_F(WebSocketOpening, AServerThatHangsUpIsAFailure) {
    TestServer server([](TestServer::Socket& socket) { readRequest(socket); });
    EXPECT_EQ(connectFailure("ws://" + server.authority()), popis(SystemTrouble::cutOff).czech());
}

TEST_F(WebSocketOpening, AServerThatNeverAnswersIsGivenUpAtTheLimit) {
    limitTo(100ms);
    TestServer server([](TestServer::Socket& socket) { readToTheEnd(socket); });
    EXPECT_TRUE(connectFailure("ws://" + server.authority()).contains("včas"));
    EXPECT_TRUE(connectFailure("wss://" + server.authority()).contains("včas"));
}

TEST_F(WebSocketOpening, TheLimitOfTheOpeningDoesNotTouchAnOpenSocket) {
    limitTo(300ms);
    TestServer patient([](TestServer::Socket& socket) { readToTheEnd(socket); });
    TestServer server(echo);
    auto socket = connect(server);
    EXPECT_TRUE(connectFailure("ws://" + patient.authority()).contains("včas"));
    EXPECT_TRUE(await(executor_, socket->ping()));
}

TEST_F(WebSocketOpening, ARefusedConnectionIsAFailure) {
    std::string authority;
    {
        TestServer gone(echo);
        authority = gone.authority();
    }
    EXPECT_EQ(connectFailure("ws://" + authority), popis(SystemTrouble::refused).czech());
}

TEST_F(WebSocketOpening, ABadAddressAndAnUnknownHostAreFailures) {
    EXPECT_EQ(connectFailure("http://127.0.0.1/"), popis(SystemTrouble::badAddress).czech());
    EXPECT_EQ(connectFailure("ws://user@127.0.0.1/"), popis(SystemTrouble::badAddress).czech());
    EXPECT_EQ(connectFailure("ws://relay.invalid/"), popis(SystemTrouble::unknownName).czech());
}

TEST_F(WebSocketOpening, AStopEndsTheAttemptAtOnce) {
    std::promise<void> reached;
    TestServer server([&reached](TestServer::Socket& socket) {
        readRequest(socket);
        reached.set_value();
        readToTheEnd(socket);
    });
    std::stop_source stop;
    auto attempt = start(executor_, client_->connect({"ws://" + server.authority()}, stop.get_token()));
    end(reached.get_future());
    EXPECT_TRUE(waits(attempt));
    stop.request_stop();
    EXPECT_NE(failureOf(end(std::move(attempt))), "");
}

TEST_F(WebSocketOpening, AStopThatCameBeforeLeavesNothingOpen) {
    TestServer server(echo);
    std::stop_source stop;
    stop.request_stop();
    EXPECT_NE(failureOf(await(executor_, client_->connect({"ws://" + server.authority()}, stop.get_token()))),
              "");
}

TEST_F(WebSocketOpening, AStopAfterTheOpeningChangesNothing) {
    TestServer server(echo);
    std::stop_source stop;
    auto socket = await(executor_, client_->connect({"ws://" + server.authority()}, stop.get_token()));
    ASSERT_TRUE(socket);
    stop.request_stop();
    EXPECT_TRUE(await(executor_, (*socket)->ping()));
}

TEST_F(WebSocketOpening, ATrustedCertificateForTheHostIsAccepted) {
    TestAuthority authority;
    trust(authority);
    TestServer server(greetOverTls(authority.issue("DNS:localhost,IP:127.0.0.1")));
    EXPECT_EQ(greetingFrom("wss://" + server.authority("localhost")), "name asked for: localhost");
    EXPECT_EQ(greetingFrom("wss://" + server.authority("127.0.0.1")), "name asked for: none");
}

TEST_F(WebSocketOpening, ACertificateOfAnUnknownAuthorityIsRefused) {
    TestAuthority trusted;
    TestAuthority other;
    trust(trusted);
    TestServer server(greetOverTls(other.issue("DNS:localhost")));
    EXPECT_EQ(connectFailure("wss://" + server.authority("localhost")),
              popis(SystemTrouble::certificateUntrusted).czech());
}

TEST_F(WebSocketOpening, ACertificateForAnotherHostIsRefused) {
    TestAuthority authority;
    trust(authority);
    TestServer named(greetOverTls(authority.issue("DNS:relay.example")));
    EXPECT_EQ(connectFailure("wss://" + named.authority("localhost")),
              popis(SystemTrouble::certificateOtherName).czech());
    TestServer local(greetOverTls(authority.issue("DNS:localhost")));
    EXPECT_EQ(connectFailure("wss://" + local.authority("127.0.0.1")),
              popis(SystemTrouble::certificateOtherName).czech());
}

TEST_F(WebSocketOpening, ACertificateThatNobodyElseSignedIsRefused) {
    TestServer server(greetOverTls(TestAuthority::issueToItself("DNS:localhost")));
    EXPECT_EQ(connectFailure("wss://" + server.authority("localhost")),
              popis(SystemTrouble::certificateUntrusted).czech());
}

TEST_F(WebSocketOpening, ACertificateOfAnotherTimeIsRefused) {
    TestAuthority authority;
    trust(authority);
    TestServer past(greetOverTls(authority.issue("DNS:localhost", {-48h, -1h})));
    EXPECT_EQ(connectFailure("wss://" + past.authority("localhost")),
              popis(SystemTrouble::certificateExpired).czech());
    TestServer future(greetOverTls(authority.issue("DNS:localhost", {1h, 48h})));
    EXPECT_EQ(connectFailure("wss://" + future.authority("localhost")),
              popis(SystemTrouble::certificateNotYetValid).czech());
}

TEST_F(WebSocketOpening, AnAuthorityThatTheSystemIsToldOfIsTrusted) {
    TestAuthority authority;
    TestServer server(greetOverTls(authority.issue("DNS:localhost")));
    const GivenAuthority given(authority.certificate());
    EXPECT_EQ(greetingFrom("wss://" + server.authority("localhost")), "name asked for: localhost");
}

TEST_F(WebSocketOpening, TheSystemsAuthoritiesDoNotKnowATestsOne) {
    TestAuthority authority;
    TestServer server(greetOverTls(authority.issue("DNS:localhost")));
    EXPECT_EQ(connectFailure("wss://" + server.authority("localhost")),
              popis(SystemTrouble::certificateUntrusted).czech());
}

TEST_F(WebSocketOpening, AServerWithoutTlsIsNotTalkedToOverWss) {
    TestServer plain([](TestServer::Socket& socket) {
        asio::write(socket, asio::buffer(std::string("HTTP/1.1 400 Bad Request\r\n\r\n")));
        readToTheEnd(socket);
    });
    EXPECT_EQ(connectFailure("wss://" + plain.authority()), popis(SystemTrouble::tlsRefused).czech());
}

TEST_F(WebSocketOpening, OldTlsIsRefused) {
    TestAuthority authority;
    trust(authority);
    TestServer server([identity = authority.issue("DNS:localhost")](TestServer::Socket& socket) {
        asio::ssl::context context(asio::ssl::context::tlsv11_server);
        SSL_CTX_set_security_level(context.native_handle(), 0);
        context.use_certificate_chain(asio::buffer(identity.certificate));
        context.use_private_key(asio::buffer(identity.key), asio::ssl::context::pem);
        asio::ssl::stream<TestServer::Socket&> stream(socket, context);
        stream.handshake(asio::ssl::stream_base::server);
        ADD_FAILURE() << "TLS 1.1 was spoken";
    });
    EXPECT_EQ(connectFailure("wss://" + server.authority("localhost")),
              popis(SystemTrouble::tlsRefused).czech());
}

} // namespace
} // namespace morvex
