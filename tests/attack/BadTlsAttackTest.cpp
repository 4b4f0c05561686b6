#include "tests/platform/net/TestAuthority.h"
#include "tests/platform/net/TestServer.h"
#include "tests/shared-apple/Devices.h"
#include "tests/support/Effort.h"
#include "tests/support/RealCompanion.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/asio/write.hpp>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <string>

namespace morvex {
namespace {

using namespace std::chrono_literals;
namespace ssl = boost::asio::ssl;

/// Somebody on the way to a relay whose address is https, without a certificate that the system trusts.
class BadTls : public testing::Test {
  protected:
    /// Plays a server of TLS with a certificate of its own making. What it is told then it must not be told.
    void playOwnAuthority(TestServer::Socket& socket) {
        const auto made = TestAuthority().issue("IP:127.0.0.1");
        ssl::context context(ssl::context::tls_server);
        context.use_certificate_chain(boost::asio::buffer(made.certificate));
        context.use_private_key(boost::asio::buffer(made.key), ssl::context::pem);
        ssl::stream<TestServer::Socket&> stream(socket, context);
        boost::system::error_code error;
        stream.handshake(ssl::stream_base::server, error);
        std::array<char, 1> byte{};
        if (!error) told += stream.read_some(boost::asio::buffer(byte), error);
    }

    /// Answers the first bytes of a handshake with something else.
    static void playBytes(TestServer::Socket& socket, const std::string& bytes) {
        std::array<char, 1> byte{};
        boost::system::error_code error;
        socket.read_some(boost::asio::buffer(byte), error);
        boost::asio::write(socket, boost::asio::buffer(bytes), error);
        while (!error) socket.read_some(boost::asio::buffer(byte), error);
    }

    void play(TestServer::Socket& socket) {
        switch (connections_++ % 4) {
        case 0:
            return playOwnAuthority(socket);
        case 1:
            return playBytes(socket, "HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}");
        case 2:
            return playBytes(socket, std::string("\x15\x03\x03\x00\x02\x02\x28", 7));
        default:
            return playBytes(socket, std::string("\x16\x03\x03\xff\xff", 5) + std::string(70'000, 'x'));
        }
    }

    std::atomic<std::size_t> told = 0;
    TestServer server{[this](TestServer::Socket& socket) { play(socket); }};

  private:
    std::size_t connections_ = 0;
};

TEST_F(BadTls, APairingTellsItNothing) {
    RealCompanion mac("https://" + server.authority());
    auto& state = mac.companion().stav().parovani;
    for (int attempt = 0; attempt < 4; ++attempt) {
        mac.on([&] { mac.companion().parovani().zacitParovani(); });
        mac.until([&state] { return !state.value().as<StavParovani::Zakladam>(); });
        EXPECT_TRUE(mac.on([&state] { return state.value().as<StavParovani::Chyba>() != nullptr; }));
    }
    EXPECT_EQ(server.connections(), 4);
    EXPECT_EQ(told, 0U);
    tell("bad TLS at a pairing", 4, "all refused in words, nothing told");
}

TEST_F(BadTls, TheLinkTellsItNothingAndTriesAgain) {
    auto identity = test::newIdentity();
    auto peer = test::remembered(*test::newIdentity(), DeviceRole::phone);
    peer.relayURL = "https://" + server.authority();
    RealCompanion mac(identity, peer);
    for (int passed = 0; passed < 2000 && server.connections() < 8; ++passed) {
        mac.pass(31s);
        std::this_thread::sleep_for(5ms);
    }
    EXPECT_GE(server.connections(), 8);
    EXPECT_EQ(told, 0U);
    EXPECT_EQ(mac.storedPeer(), peer);
    tell("bad TLS for the link", 8, "all refused, nothing told, tried again");
}

} // namespace
} // namespace morvex
