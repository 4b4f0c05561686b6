#include "platform/net/AsioTlsClient.h"

#include "foundation/ThreadExecutor.h"
#include "shared/base/SystemTrouble.h"
#include "tests/platform/net/GivenAuthority.h"
#include "tests/platform/net/NetworkTest.h"
#include "tests/platform/net/SlowNames.h"
#include "tests/support/TestAuthority.h"
#include "tests/support/TestServer.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/read.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/asio/write.hpp>

#include <array>
#include <chrono>
#include <functional>
#include <stop_token>
#include <string>

namespace morvex {
namespace {

namespace asio = boost::asio;
using namespace std::chrono_literals;

using TlsPeer = asio::ssl::stream<TestServer::Socket&>;

/// A server over TLS that plays a script.
TestServer::Script overTls(TestAuthority::Identity identity, std::function<void(TlsPeer&)> script) {
    return [identity = std::move(identity), script = std::move(script)](TestServer::Socket& socket) {
        asio::ssl::context context(asio::ssl::context::tls_server);
        context.use_certificate_chain(asio::buffer(identity.certificate));
        context.use_private_key(asio::buffer(identity.key), asio::ssl::context::pem);
        TlsPeer peer(socket, context);
        peer.handshake(asio::ssl::stream_base::server);
        script(peer);
    };
}

class AsioTlsClientTest : public testing::Test {
  protected:
    TestServer serve(std::function<void(TlsPeer&)> script) {
        return TestServer(overTls(authority.issue("DNS:localhost,IP:127.0.0.1"), std::move(script)));
    }

    Result<std::shared_ptr<TlsConnection>> connect(TestServer& server, const std::string& host = "localhost",
                                                   std::stop_token stop = {}) {
        const auto port = static_cast<std::uint16_t>(std::stoi(server.authority("").substr(1)));
        return await(executor, client->connect(host, port, std::move(stop)));
    }

    std::string receiveAll(TlsConnection& connection) {
        std::string all;
        for (;;) {
            const auto bytes = await(executor, connection.receive()).value();
            if (bytes.empty()) return all;
            all += bytes;
        }
    }

    TestAuthority authority;
    ThreadExecutor executor{"test"};
    std::unique_ptr<AsioTlsClient> client =
        std::make_unique<AsioTlsClient>(NetworkLimits{}, authority.certificate());
};

std::string readLine(TlsPeer& peer) {
    std::string line;
    for (char byte = 0; byte != '\n'; line += byte) asio::read(peer, asio::buffer(&byte, 1));
    return line;
}

TEST_F(AsioTlsClientTest, CarriesBytesBothWaysAndTellsTheEnd) {
    auto server = serve([](TlsPeer& peer) {
        asio::write(peer, asio::buffer("echo " + readLine(peer)));
        peer.shutdown();
    });
    for (const auto* host : {"localhost", "127.0.0.1"}) {
        auto connection = connect(server, host).value();
        EXPECT_TRUE(await(executor, connection->send(std::string("a\0b\r\n", 5))));
        EXPECT_EQ(receiveAll(*connection), std::string("echo a\0b\r\n", 10));
        EXPECT_EQ(await(executor, connection->receive()).value(), "") << "again";
    }
}

TEST_F(AsioTlsClientTest, AnEndWithoutAFarewellIsAnEndToo) {
    auto server = serve([](TlsPeer& peer) { asio::write(peer, asio::buffer(std::string("bye"))); });
    auto connection = connect(server).value();
    EXPECT_EQ(receiveAll(*connection), "bye");
}

TEST_F(AsioTlsClientTest, ABrokenConnectionIsAFailure) {
    auto server = serve([](TlsPeer& peer) {
        readLine(peer);
        resetConnection(peer.next_layer());
    });
    auto connection = connect(server).value();
    EXPECT_TRUE(await(executor, connection->send("x\n")));
    EXPECT_EQ(failureOf(await(executor, connection->receive())), popis(SystemTrouble::cutOff).czech());
    EXPECT_NE(failureOf(await(executor, connection->send("x\n"))), "");
}

TEST_F(AsioTlsClientTest, CarriesMoreThanTheSystemHoldsAndSlowsTheSender) {
    constexpr std::size_t size = std::size_t{32} * 1024 * 1024;
    std::promise<void> mayRead;
    std::promise<std::size_t> seen;
    auto server = serve([&](TlsPeer& peer) {
        mayRead.get_future().wait();
        std::string all(size, '\0');
        seen.set_value(asio::read(peer, asio::buffer(all)));
    });
    auto connection = connect(server).value();
    auto sent = start(executor, connection->send(std::string(size, 'x')));
    EXPECT_TRUE(waits(sent));
    mayRead.set_value();
    EXPECT_TRUE(end(std::move(sent)));
    EXPECT_EQ(end(seen.get_future()), size);
}

TEST_F(AsioTlsClientTest, ClosingFailsWhatWaitsAndWhatComes) {
    auto server = serve([](TlsPeer& peer) { readToTheEnd(peer.next_layer()); });
    auto connection = connect(server).value();
    auto received = start(executor, connection->receive());
    connection->close();
    connection->close();
    EXPECT_EQ(failureOf(end(std::move(received))), "Spojení je zavřené.");
    EXPECT_EQ(failureOf(await(executor, connection->receive())), "Spojení je zavřené.");
    EXPECT_EQ(failureOf(await(executor, connection->send("x"))), "Spojení je zavřené.");
}

TEST_F(AsioTlsClientTest, ClosingSaysFarewellWhenNothingIsUnderWay) {
    std::promise<boost::system::error_code> ended;
    auto server = serve([&](TlsPeer& peer) {
        std::array<char, 1> byte{};
        boost::system::error_code error;
        peer.read_some(asio::buffer(byte), error);
        ended.set_value(error);
    });
    auto connection = connect(server).value();
    connection->close();
    EXPECT_EQ(end(ended.get_future()), asio::error::eof);
}

TEST_F(AsioTlsClientTest, AConnectionThatNobodyHoldsEnds) {
    std::promise<void> ended;
    auto server = serve([&](TlsPeer& peer) {
        readToTheEnd(peer.next_layer());
        ended.set_value();
    });
    connect(server).value().reset();
    end(ended.get_future());
}

TEST_F(AsioTlsClientTest, AFarewellThatNobodyAnswersIsBounded) {
    client = std::make_unique<AsioTlsClient>(NetworkLimits{.closing = 50ms}, authority.certificate());
    std::promise<void> ended;
    auto server = serve([&](TlsPeer& peer) {
        readToTheEnd(peer.next_layer());
        ended.set_value();
    });
    auto connection = connect(server).value();
    connection->close();
    end(ended.get_future());
}

TEST_F(AsioTlsClientTest, WhatWaitsFailsWhenTheClientGoes) {
    auto server = serve([](TlsPeer& peer) { readToTheEnd(peer.next_layer()); });
    auto connection = connect(server).value();
    auto received = start(executor, connection->receive());
    client.reset();
    EXPECT_NE(failureOf(end(std::move(received))), "");
    EXPECT_NE(failureOf(await(executor, connection->receive())), "");
    connection.reset();
}

TEST_F(AsioTlsClientTest, AClientMayGoAsSoonAsItIsMade) {
    for (int round = 0; round < 100; ++round) {
        AsioTlsClient other;
        auto connection = start(executor, other.connect("127.0.0.1", 1, {}));
        if (round % 2 == 0) end(std::move(connection));
    }
}

TEST_F(AsioTlsClientTest, OnlyAServerThatProvesItsNameIsTalkedTo) {
    TestAuthority other;
    auto untrusted = TestServer(overTls(other.issue("DNS:localhost"), [](TlsPeer&) {}));
    EXPECT_EQ(failureOf(connect(untrusted)), popis(SystemTrouble::certificateUntrusted).czech());
    auto named = TestServer(overTls(authority.issue("DNS:mail.example"), [](TlsPeer&) {}));
    EXPECT_EQ(failureOf(connect(named)), popis(SystemTrouble::certificateOtherName).czech());
    auto past = TestServer(overTls(authority.issue("DNS:localhost", {-48h, -1h}), [](TlsPeer&) {}));
    EXPECT_EQ(failureOf(connect(past)), popis(SystemTrouble::certificateExpired).czech());
    TestServer plain([](TestServer::Socket& socket) {
        asio::write(socket, asio::buffer(std::string("220 mail.example ESMTP\r\n")));
        readToTheEnd(socket);
    });
    EXPECT_EQ(failureOf(connect(plain)), popis(SystemTrouble::tlsRefused).czech());
}

TEST_F(AsioTlsClientTest, ABadHostIsAFailureAndNothingIsAsked) {
    for (const auto& host : {std::string(), std::string("localhost\0x", 11)})
        EXPECT_EQ(failureOf(await(executor, client->connect(host, 993, {}))),
                  popis(SystemTrouble::badAddress).czech());
    EXPECT_EQ(failureOf(await(executor, client->connect("host.invalid", 993, {}))),
              popis(SystemTrouble::unknownName).czech());
}

TEST_F(AsioTlsClientTest, AServerThatNeverAnswersIsGivenUpAtTheLimit) {
    client = std::make_unique<AsioTlsClient>(NetworkLimits{.opening = 50ms}, authority.certificate());
    TestServer silent([](TestServer::Socket& socket) { readToTheEnd(socket); });
    EXPECT_EQ(failureOf(connect(silent)), popis(SystemTrouble::timedOut).czech());
}

TEST_F(AsioTlsClientTest, AStopEndsTheAttemptAtOnce) {
    std::stop_source stop;
    TestServer silent([&](TestServer::Socket& socket) {
        stop.request_stop();
        readToTheEnd(socket);
    });
    EXPECT_NE(failureOf(connect(silent, "localhost", stop.get_token())), "");
}

TEST_F(AsioTlsClientTest, AStopDuringTheLookUpConnectsToNobody) {
    TestServer server([](TestServer::Socket& socket) { readToTheEnd(socket); });
    SlowName slow;
    std::stop_source stop;
    const auto port = static_cast<std::uint16_t>(std::stoi(server.authority("").substr(1)));
    auto attempt = start(executor, client->connect(SlowName::host, port, stop.get_token()));
    slow.waitForLookUp();
    stop.request_stop();
    EXPECT_NE(failureOf(end(std::move(attempt))), "");
    slow.find();
    client.reset();
    EXPECT_EQ(server.connections(), 0);
}

TEST_F(AsioTlsClientTest, ALookUpBeyondTheLimitConnectsToNobody) {
    TestServer server([](TestServer::Socket& socket) { readToTheEnd(socket); });
    client = std::make_unique<AsioTlsClient>(NetworkLimits{.opening = 50ms}, authority.certificate());
    SlowName slow;
    EXPECT_EQ(failureOf(connect(server, SlowName::host)), popis(SystemTrouble::timedOut).czech());
    slow.find();
    client.reset();
    EXPECT_EQ(server.connections(), 0);
}

TEST_F(AsioTlsClientTest, ClosingTwiceKeepsTheFarewell) {
    std::promise<boost::system::error_code> ended;
    auto server = serve([&](TlsPeer& peer) {
        std::array<char, 1> byte{};
        boost::system::error_code error;
        peer.read_some(asio::buffer(byte), error);
        ended.set_value(error);
    });
    auto connection = connect(server).value();
    connection->close();
    connection->close();
    connection.reset();
    EXPECT_EQ(end(ended.get_future()), asio::error::eof);
}

} // namespace
} // namespace morvex
