#include "shared/trust/Parovani.h"
#include "tests/attack/MemoryMeter.h"
#include "tests/relay/RunningRelay.h"
#include "tests/support/Devices.h"
#include "tests/support/Effort.h"
#include "tests/support/RealCompanion.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestAuthority.h"
#include "tests/support/TestServer.h"

#include <boost/asio/buffer.hpp>
#include <boost/asio/ssl/context.hpp>
#include <boost/asio/ssl/stream.hpp>
#include <boost/asio/write.hpp>
#include <gtest/gtest.h>

#include <array>
#include <atomic>
#include <fstream>
#include <functional>
#include <string>
#include <thread>
#include <vector>

namespace morvex {
namespace {

using namespace std::chrono_literals;
using Socket = TestServer::Socket;
namespace ssl = boost::asio::ssl;

/// What an attacker on the path does with a connection to a relay whose address is https.
struct Fault {
    const char* what;
    std::function<void(Socket&)> play;
};

/// Forwards bytes from one socket to the other until the connection has ended.
void carry(Socket& from, Socket& to) {
    std::array<char, 4096> buffer{};
    boost::system::error_code error;
    while (!error) {
        const auto count = from.read_some(boost::asio::buffer(buffer), error);
        if (!error) boost::asio::write(to, boost::asio::buffer(buffer.data(), count), error);
    }
    to.shutdown(Socket::shutdown_both, error);
}

/// An attacker on the path to a real TLS relay whose authority the companion trusts. He takes the relay's
/// place, and at the end lets the connections through.
class BadTls : public testing::Test {
  protected:
    BadTls() {
        for (const auto& [name, text] :
             {std::pair{"certificate", genuine_.certificate}, {"key", genuine_.key}})
            std::ofstream(folder_.path() / name) << text;
    }

    /// A companion and a phone that are a pair at the relay.
    PairedPeer pairAtRelay(const DeviceIdentity& mac) {
        auto peer = test::remembered(*test::newIdentity(), DeviceRole::phone);
        peer.relayURL = address();
        const auto until = dateFromSeconds(4'000'000'000);
        EXPECT_TRUE(
            store_.create(peer.pairID, {mac.deviceID(), mac.signingKey(), DeviceRole::mac}, {}, until));
        EXPECT_TRUE(store_.join(peer.pairID, {peer.deviceID, peer.podpisovyKlic, DeviceRole::phone}));
        return peer;
    }

    void openRelay() {
        RelayOptions options;
        options.tls = {folder_.path() / "certificate", folder_.path() / "key"};
        relay_ = std::make_unique<RunningRelay>(RunningRelay::quickLimits(), std::move(store_), options);
    }

    [[nodiscard]] std::string address() const { return "https://" + server.authority(); }

    /// A TLS server with this certificate. Everything that the companion tells it is a leak.
    std::function<void(Socket&)> holding(TestAuthority::Identity identity,
                                         ssl::context::method method = ssl::context::tls_server) {
        return [this, identity = std::move(identity), method](Socket& socket) {
            ssl::context context(method);
            if (method != ssl::context::tls_server) SSL_CTX_set_security_level(context.native_handle(), 0);
            context.use_certificate_chain(boost::asio::buffer(identity.certificate));
            context.use_private_key(boost::asio::buffer(identity.key), ssl::context::pem);
            ssl::stream<Socket&> stream(socket, context);
            boost::system::error_code error;
            stream.handshake(ssl::stream_base::server, error);
            std::array<char, 1> byte{};
            if (!error) told += stream.read_some(boost::asio::buffer(byte), error);
        };
    }

    /// Answers the first byte of a handshake with `bytes`.
    static std::function<void(Socket&)> saying(std::string bytes) {
        return [bytes = std::move(bytes)](Socket& socket) {
            std::array<char, 1> byte{};
            boost::system::error_code error;
            socket.read_some(boost::asio::buffer(byte), error);
            boost::asio::write(socket, boost::asio::buffer(bytes), error);
            while (!error) socket.read_some(boost::asio::buffer(byte), error);
        };
    }

    TestAuthority authority;
    const std::vector<Fault> faults{
        {"an unknown authority", holding(TestAuthority().issue("IP:127.0.0.1"))},
        {"nobody's signature", holding(TestAuthority::issueToItself("IP:127.0.0.1"))},
        {"a certificate of yesterday", holding(authority.issue("IP:127.0.0.1", {-48h, -1h}))},
        {"a certificate of tomorrow", holding(authority.issue("IP:127.0.0.1", {1h, 48h}))},
        {"another address", holding(authority.issue("IP:127.0.0.2"))},
        {"a name", holding(authority.issue("DNS:localhost,DNS:relay.example"))},
        {"TLS 1.1", holding(authority.issue("IP:127.0.0.1"), ssl::context::tlsv11_server)},
        {"HTTP", saying("HTTP/1.1 200 OK\r\nContent-Length: 2\r\n\r\n{}")},
        {"an alert", saying(std::string("\x15\x03\x03\x00\x02\x02\x28", 7))},
        {"a record too long", saying(std::string("\x16\x03\x03\xff\xff", 5) + std::string(70'000, 'x'))},
    };
    std::atomic<std::size_t> told = 0;
    std::atomic<bool> isHonest = false;

  private:
    void play(Socket& socket) {
        if (!isHonest) return faults[faulty_++ % faults.size()].play(socket);
        Socket relay(socket.get_executor());
        relay.connect({boost::asio::ip::address_v4::loopback(), relay_->port()});
        std::thread back([&] { carry(relay, socket); });
        carry(socket, relay);
        back.join();
    }

    const TestAuthority::Identity genuine_ = authority.issue("IP:127.0.0.1");
    TemporaryFolder folder_;
    PairStore store_ = RunningRelay::memoryStore();
    std::unique_ptr<RunningRelay> relay_;
    std::size_t faulty_ = 0;

  protected:
    TestServer server{[this](Socket& socket) { play(socket); }};
};

TEST_F(BadTls, APairingTellsItNothing) {
    openRelay();
    RealCompanion mac(address(), authority.certificate());
    const MemoryMeter memory;
    auto& state = mac.companion().stav().parovani;
    for (const auto& fault : faults) {
        mac.on([&] { mac.companion().parovani().zacitParovani(); });
        mac.until([&state] { return !state.value().as<StavParovani::Zakladam>(); });
        EXPECT_TRUE(mac.on([&state] { return state.value().as<StavParovani::Chyba>() != nullptr; }))
            << fault.what;
    }
    EXPECT_EQ(server.connections(), std::ssize(faults)) << "nothing is tried again";
    EXPECT_EQ(told, 0U);
    isHonest = true;
    EXPECT_TRUE(Parovani::bundleOf(mac.qr()));
    tell("bad TLS at a pairing", faults.size(),
         "all refused in words, nothing told, recovered, " + expectLittleMemory(memory));
}

TEST_F(BadTls, TheLinkTellsItNothingAndTriesAgain) {
    const auto identity = test::newIdentity();
    const auto peer = pairAtRelay(*identity);
    openRelay();
    RealCompanion mac(identity, peer, "/nonexistent", authority.certificate());
    const MemoryMeter memory;
    const auto attacks = std::ssize(faults);
    for (int passed = 0; passed < 2000 && server.connections() < attacks; ++passed) {
        mac.pass(31s);
        std::this_thread::sleep_for(5ms);
    }
    EXPECT_GE(server.connections(), attacks);
    EXPECT_EQ(told, 0U);
    isHonest = true;
    const auto isLoggedIn = [&] {
        return mac.companion().stav().dostupnost.value().as<MacAvailability::Offline>() != nullptr;
    };
    for (int passed = 0; passed < 2000 && !mac.on(isLoggedIn); ++passed) {
        mac.pass(31s);
        std::this_thread::sleep_for(5ms);
    }
    EXPECT_TRUE(mac.on(isLoggedIn));
    EXPECT_EQ(mac.storedPeer(), peer);
    tell("bad TLS for the link", faults.size(),
         "all refused, nothing told, logged in at the honest one, " + expectLittleMemory(memory));
}

} // namespace
} // namespace morvex
