#include "shared/trust/Parovani.h"
#include "tests/attack/MemoryMeter.h"
#include "tests/attack/TlsFaults.h"
#include "tests/relay/RunningRelay.h"
#include "tests/support/Devices.h"
#include "tests/support/Effort.h"
#include "tests/support/RealCompanion.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestAuthority.h"
#include "tests/support/TestServer.h"

#include <boost/asio/buffer.hpp>
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

    TestAuthority authority;
    std::atomic<std::size_t> told = 0;
    const std::vector<TlsFault> faults = tlsFaults(authority, told);
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
