#include "relay/OriginLimit.h"
#include "relay/Places.h"
#include "tests/attack/MemoryMeter.h"
#include "tests/attack/StrangerSocket.h"
#include "tests/relay/RunningRelay.h"
#include "tests/support/Effort.h"
#include "tests/support/RelayClient.h"
#include "tests/support/TemporaryFolder.h"
#include "tests/support/TestAuthority.h"

#include <gtest/gtest.h>

#include <deque>
#include <exception>
#include <fstream>
#include <functional>
#include <memory>
#include <string>
#include <sys/resource.h>
#include <vector>

namespace morvex {
namespace {

using Moment = Places::Moment;

constexpr std::size_t places = 64;
constexpr std::size_t honestTries = 60;
const std::string honestAddress = "127.200.0.1";

Date today() {
    return std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now());
}

/// Pairs with distinct names.
std::vector<TestPair> namedPairs(std::size_t count, const std::string& name) {
    std::vector<TestPair> pairs(count);
    for (std::size_t index = 0; index < count; ++index)
        pairs[index].id = PairID{name + std::to_string(index)};
    return pairs;
}

/// `127.NETWORK.….1`, another /24 for each number.
std::string addressOfNetwork(std::size_t number) {
    return "127." + std::to_string(1 + number / 250) + "." + std::to_string(number % 250) + ".1";
}

/// A stranger at a small relay, next to the devices of a pair that the relay has known for long.
class RelayStranger : public testing::Test {
  protected:
    /// A long run holds more sockets than many systems allow unasked.
    static void SetUpTestSuite() {
        rlimit limit{};
        ASSERT_EQ(::getrlimit(RLIMIT_NOFILE, &limit), 0);
        limit.rlim_cur = limit.rlim_max;
        ASSERT_EQ(::setrlimit(RLIMIT_NOFILE, &limit), 0);
    }

    static RelayLimits limits() {
        auto limits = RunningRelay::quickLimits();
        limits.connections = places;
        limits.thisComputer = Origin::ThisComputer::limited;
        return limits;
    }

    /// A socket whose device has logged in and was told that its peer is offline; null if the relay refused
    /// it.
    static std::unique_ptr<DeviceSocket> logIn(std::uint16_t port, bool usesTls, const std::string& from,
                                               const TestPair& pair) {
        try {
            auto socket = std::make_unique<DeviceSocket>(port, usesTls, "/v1/ws?v=1.4", from);
            const auto challenge = decode<RelayMessage>(socket->read().value_or(""));
            if (!challenge) return nullptr;
            const auto& nonce = challenge->as<RelayMessage::Challenge>()->nonce;
            const bool isIn = socket->tryToWrite(pair.authenticate(pair.mac, nonce)) &&
                              socket->read() == encode(RelayMessage{RelayMessage::Authenticated{false}});
            return isIn ? std::move(socket) : nullptr;
        } catch (const std::exception&) {
            return nullptr;
        }
    }

    /// The stranger connects, and in between the honest device tries as well.
    std::string trouble(std::uint16_t port, std::size_t connections, bool usesTls,
                        const std::function<void(std::size_t)>& comes) {
        std::size_t passed = 0;
        for (std::size_t turn = 0; turn < honestTries; ++turn) {
            for (auto index = turn * connections / honestTries;
                 index < (turn + 1) * connections / honestTries; ++index)
                comes(index);
            if (logIn(port, usesTls, honestAddress, known[0])) ++passed;
        }
        EXPECT_EQ(passed, honestTries);
        return std::to_string(passed) + " of " + std::to_string(honestTries) + " honest logins passed";
    }

    /// In MiB; 24 of them are allowed for frames.
    static constexpr double mostMemory = 64;

    std::vector<TestPair> known = namedPairs(1, "KNOWN");
    Date longAgo = today() - std::chrono::hours{5};
};

struct Way {
    const char* what;
    const char* says;
};

constexpr Way waysToWait[] = {
    {"idle sockets", ""},
    {"half a request", "POST /v1/pair/create HTTP/1.1\r\nHost: localhost\r\nContent-Length: 60000\r\n\r\n{"},
    {"WebSockets without a login",
     "GET /v1/ws?v=1.4 HTTP/1.1\r\nHost: localhost\r\nConnection: Upgrade\r\nUpgrade: websocket\r\n"
     "Sec-WebSocket-Version: 13\r\nSec-WebSocket-Key: AAAAAAAAAAAAAAAAAAAAAA==\r\n\r\n"},
};

} // namespace

TEST_F(RelayStranger, ConnectionsOfOneAddressThatWaitKeepNobodyOut) {
    for (const auto& [what, says] : waysToWait) {
        RunningRelay relay{limits(), storeOf(known, longAgo)};
        std::deque<StrangerSocket> sockets;
        const auto count = cases(300, 2000);
        const auto outcome = trouble(relay.port(), count, false, [&](std::size_t) {
            sockets.emplace_back(relay.port(), "127.1.0.1").say(says);
        });
        tell(std::string{"One address, "} + what, count, outcome);
    }
}

TEST_F(RelayStranger, ConnectionsOfManyNetworksThatWaitKeepNobodyOut) {
    for (const auto& [what, says] : waysToWait) {
        RunningRelay relay{limits(), storeOf(known, longAgo)};
        std::deque<StrangerSocket> sockets;
        const auto count = cases(300, 2000);
        const auto outcome = trouble(relay.port(), count, false, [&](std::size_t index) {
            sockets.emplace_back(relay.port(), addressOfNetwork(index)).say(says);
        });
        tell(std::string{"A network for each connection, "} + what, count, outcome);
    }
}

TEST_F(RelayStranger, HalfATlsHelloKeepsNobodyOut) {
    TemporaryFolder folder;
    const auto identity = TestAuthority::issueToItself("DNS:localhost");
    RelayOptions options;
    options.tls = RelayOptions::Tls{folder.path() / "certificate.pem", folder.path() / "key.pem"};
    std::ofstream(options.tls->certificate) << identity.certificate;
    std::ofstream(options.tls->key) << identity.key;
    RunningRelay relay{limits(), storeOf(known, longAgo), options};
    std::deque<StrangerSocket> sockets;
    const auto count = cases(300, 2000);
    const auto outcome = trouble(relay.port(), count, true, [&](std::size_t index) {
        sockets.emplace_back(relay.port(), addressOfNetwork(index % 8)).say("\x16\x03\x01\x02");
    });
    tell("Half a TLS hello", count, outcome);
}

TEST_F(RelayStranger, LoggedInPairsOfItsOwnKeepNobodyOut) {
    struct Row {
        const char* what;
        std::size_t networks;
        std::chrono::hours age;
    };

    // An attacker can also create pairs long in advance.
    for (const auto& [what, networks, age] : {Row{"of one address", 1, std::chrono::hours{0}},
                                              Row{"of many networks", 250, std::chrono::hours{0}},
                                              Row{"old ones of eight networks", 8, std::chrono::hours{5}}}) {
        const auto count = cases(120, 600);
        const auto own = namedPairs(count, "OWN");
        auto store = storeOf(known, longAgo);
        for (const auto& pair : own) {
            const Member mac{pair.mac.deviceID(), pair.mac.signingKey(), DeviceRole::mac};
            const Member phone{pair.phone.deviceID(), pair.phone.signingKey(), DeviceRole::phone};
            ASSERT_TRUE(store.create(pair.id, mac, sha256(asBytes(pair.id.rawValue)), today() - age));
            ASSERT_TRUE(store.join(pair.id, phone).value());
        }
        RunningRelay relay{limits(), std::move(store)};
        std::vector<std::unique_ptr<DeviceSocket>> sockets;
        const auto outcome = trouble(relay.port(), count, false, [&](std::size_t index) {
            auto socket = logIn(relay.port(), false, addressOfNetwork(index % networks), own[index]);
            if (socket) sockets.push_back(std::move(socket));
        });
        EXPECT_GT(sockets.size(), 0U);
        tell(std::string{"Logged-in pairs "} + what, count,
             std::to_string(sockets.size()) + " of them let in, " + outcome);
    }
}

TEST_F(RelayStranger, FailedLoginsOfOneAddressCostLittleAndKeepNobodyOut) {
    RunningRelay relay{limits(), storeOf(known, longAgo)};
    const auto count = cases(200, 2000);
    std::size_t judged = 0;
    const auto outcome = trouble(relay.port(), count, false, [&](std::size_t) {
        StrangerSocket socket{relay.port(), "127.1.0.1"};
        socket.say(waysToWait[2].says);
        if (!socket.hears("challenge")) return;
        socket.say(StrangerSocket::textFrame(known[0].authenticate(known[0].mac, Bytes(32, 1))));
        if (socket.hears("badSignature")) ++judged;
    });
    EXPECT_GT(judged, 0U);
    EXPECT_LE(judged, limits().loginsPerMinute / limits().failedLoginCost);
    tell("Failed logins", count, std::to_string(judged) + " signatures were judged, " + outcome);
}

TEST_F(RelayStranger, CreationsFromAWholeProvidersNetworkAreLimited) {
    RelayLimits defaults;
    OriginLimit calls{defaults.callsPerMinute, std::chrono::minutes{1}};
    const auto count = cases(10'000, 1'000'000);
    const Moment now{std::chrono::hours{1}};
    std::size_t passed = 0;
    for (std::size_t index = 0; index < count; ++index) {
        // A different /64 of one /32 for each call.
        boost::asio::ip::address_v6::bytes_type bytes{0x20, 0x01, 0x0d, 0xb8};
        for (std::size_t place = 0; place < 4; ++place)
            bytes.at(4 + place) = static_cast<std::uint8_t>(index >> (8 * place));
        if (calls.admits(Origin::of(boost::asio::ip::address_v6{bytes}), now)) ++passed;
    }
    const auto honest = Origin::of(boost::asio::ip::make_address("2001:db9::1"));
    std::size_t honestPassed = 0;
    for (std::size_t index = 0; index < defaults.callsPerMinute; ++index)
        if (calls.admits(honest, now)) ++honestPassed;
    EXPECT_LE(passed, 8 * defaults.callsPerMinute);
    EXPECT_EQ(honestPassed, defaults.callsPerMinute);
    tell("Calls from one IPv6 /32", count,
         std::to_string(passed) + " passed, and " + std::to_string(honestPassed) + " of " +
             std::to_string(defaults.callsPerMinute) + " of another network");
}

TEST_F(RelayStranger, UnfinishedFramesStayWithinTheMemoryOfAll) {
    auto small = RunningRelay::quickLimits();
    small.heldInAll = 24 * mebibyte;
    // Ticks are rare here, so memory that is counted only at ticks would not be counted at all.
    small.tick = std::chrono::hours{1};
    const auto count = cases(60, 300);
    const auto own = namedPairs(count, "OWN");
    auto store = storeOf(own, today());
    RunningRelay relay{small, std::move(store)};
    const std::string unfinished(3 * mebibyte, ' ');
    MemoryMeter memory;
    std::deque<StrangerSocket> sockets;
    for (std::size_t index = 0; index < count; ++index) {
        auto& socket = sockets.emplace_back(relay.port(), "127.0.0.1");
        socket.logIn(own[index], own[index].mac);
        socket.sayUnfinished(unfinished);
    }
    // When this pair has exchanged a frame, everything sent before has been read.
    DeviceSocket mac{relay.port()};
    mac.logIn(own[0], own[0].mac, false);
    mac.write(own[0].fromMac());
    EXPECT_TRUE(mac.read());
    tell("Unfinished frames of 3 MiB, 24 MiB allowed", count, expectLittleMemory(memory, mostMemory));
}

TEST_F(RelayStranger, SocketsThatAreReplacedTakeTheirUnfinishedFramesAlong) {
    auto small = RunningRelay::quickLimits();
    small.heldInAll = 24 * mebibyte;
    // They may take as long as they like to close.
    small.closing = std::chrono::hours{1};
    const auto count = cases(60, 300);
    RunningRelay relay{small, storeOf(known, longAgo)};
    const std::string unfinished(3 * mebibyte, ' ');
    MemoryMeter memory;
    std::deque<StrangerSocket> sockets;
    for (std::size_t index = 0; index < count; ++index) {
        auto& socket = sockets.emplace_back(relay.port(), "127.0.0.1");
        socket.logIn(known[0], known[0].mac);
        socket.sayUnfinished(unfinished);
    }
    DeviceSocket phone{relay.port()};
    phone.logIn(known[0], known[0].phone, true);
    tell("Unfinished frames of 3 MiB on replaced sockets, 24 MiB allowed", count,
         expectLittleMemory(memory, mostMemory));
}

TEST_F(RelayStranger, UnfinishedFramesOfOneAddressEndNoLongerOneOfAnother) {
    auto small = RunningRelay::quickLimits();
    small.thisComputer = Origin::ThisComputer::limited;
    small.heldInAll = 24 * mebibyte;
    small.closing = RelayLimits::Time{50};
    const auto count = cases(40, 100);
    const auto pairs = namedPairs(count + 1, "OWN");
    const auto& other = pairs.back();
    RunningRelay relay{small, storeOf(pairs, longAgo)};
    StrangerSocket honest{relay.port(), honestAddress};
    honest.logIn(other, other.mac);
    honest.sayUnfinished(std::string(3 * mebibyte, ' '));
    std::deque<StrangerSocket> sockets;
    for (std::size_t index = 0; index < count; ++index) {
        auto& socket = sockets.emplace_back(relay.port(), "127.1.0.1");
        socket.logIn(pairs[index], pairs[index].mac);
        socket.sayUnfinished(std::string((index == 0 ? 2 : 1) * mebibyte, ' '));
    }
    EXPECT_TRUE(sockets[0].isCutOff()) << "the one of its address that holds the most";
    DeviceSocket phone{relay.port(), false, "/v1/ws?v=1.4", honestAddress};
    phone.logIn(other, other.phone, true);
    tell("Unfinished frames of 1 MiB from one address, 24 MiB allowed", count,
         "an unfinished frame of 3 MiB from another one stayed");
}

TEST_F(RelayStranger, AFrameThatIsNeverFinishedEndsItsSocket) {
    auto hasty = RunningRelay::quickLimits();
    hasty.wholeFrame = RelayLimits::Time{100};
    RunningRelay relay{hasty, storeOf(known, longAgo)};
    StrangerSocket socket{relay.port(), "127.0.0.1"};
    socket.logIn(known[0], known[0].mac);
    socket.sayUnfinished("{");
    EXPECT_TRUE(socket.isCutOff());
}

} // namespace morvex
