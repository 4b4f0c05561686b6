#include "relay/FailureFrame.h"
#include "tests/relay/LoggedInPair.h"
#include "tests/support/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <thread>
#include <vector>

using namespace morvex;

namespace {

constexpr std::uint16_t policyViolation = 1008;

Date today() {
    return std::chrono::time_point_cast<Date::duration>(std::chrono::system_clock::now());
}

std::string request(std::string_view start, std::string_view headers, std::string_view body = "") {
    return std::string{start} +
           " HTTP/1.1\r\nHost: localhost\r\nContent-Length: " + std::to_string(body.size()) + "\r\n" +
           std::string{headers} + "\r\n" + std::string{body};
}

constexpr std::string_view jsonType = "Content-Type: application/json\r\n";

void expectEnded(DeviceSocket& socket, RelayFailure code) {
    EXPECT_EQ(socket.read(), failureFrame(code));
    EXPECT_EQ(socket.read(), std::nullopt);
    EXPECT_EQ(socket.closeCode(), policyViolation);
}

using Connected = LoggedInPair<RunningRelay>;

/// What a mac hears from its login on, until the phone is away or it is cut off itself. Reading answers its
/// pings, and nobody reads for the phone.
std::vector<std::string> heardBesideASilentPhone(RelayLimits::Time silence) {
    auto limits = RunningRelay::quickLimits();
    limits.pingAfter = RelayLimits::Time{20};
    limits.silence = silence;
    RunningRelay relay{limits};
    const auto pair = pairAt(relay.port());
    DeviceSocket phone{relay.port()};
    phone.logIn(pair, pair.phone, false);
    DeviceSocket mac{relay.port()};
    mac.authenticate(pair, pair.mac);
    std::vector<std::string> heard;
    const auto isPhoneThere = [&] {
        return heard.empty() || heard.back() == encode(RelayMessage{RelayMessage::Authenticated{true}});
    };
    while (isPhoneThere()) {
        auto frame = mac.read();
        if (!frame) break;
        heard.push_back(*std::move(frame));
    }
    return heard;
}

} // namespace

TEST(RelayServer, LetsTwoDevicesPairAndTalk) {
    Connected both;
    both.mac.write(both.pair.fromMac());
    EXPECT_EQ(both.phone.read(), both.pair.fromMac());
    both.phone.write(both.pair.fromPhone());
    EXPECT_EQ(both.mac.read(), both.pair.fromPhone());
}

TEST(RelayServer, LetsTheCreatorWaitForThePhone) {
    RunningRelay relay;
    TestPair pair;
    const auto founding =
        decode<ZalozitOdpoved>(post(relay.port(), "/v1/pair/create", TestPair::create(pair.mac)).body)
            .value();
    pair.id = founding.pairID;
    DeviceSocket mac{relay.port()};
    mac.logIn(pair, pair.mac, false);
    EXPECT_EQ(post(relay.port(), "/v1/pair/join", TestPair::join(pair.phone, founding.pairingToken)).status,
              200U);
    DeviceSocket phone{relay.port()};
    phone.logIn(pair, pair.phone, true);
    phone.write(pair.fromPhone());
    EXPECT_EQ(mac.read(), online);
    EXPECT_EQ(mac.read(), pair.fromPhone());
}

TEST(RelayServer, RefusesABadSignatureAndCloses) {
    RunningRelay relay;
    const auto pair = pairAt(relay.port());
    DeviceSocket socket{relay.port()};
    socket.read();
    socket.write(pair.authenticate(pair.mac, Bytes(32, 1)));
    expectEnded(socket, RelayFailure::badSignature);
}

TEST(RelayServer, RefusesAReplayOfAnotherSocketsAnswer) {
    RunningRelay relay;
    const auto pair = pairAt(relay.port());
    DeviceSocket first{relay.port()};
    const auto challenge = decode<RelayMessage>(first.read().value()).value();
    DeviceSocket second{relay.port()};
    second.read();
    second.write(pair.authenticate(pair.mac, challenge.as<RelayMessage::Challenge>()->nonce));
    expectEnded(second, RelayFailure::badSignature);
}

TEST(RelayServer, RefusesStrangersEnvelopesAndNonsenseBeforeTheLogin) {
    RunningRelay relay;
    const auto pair = pairAt(relay.port());
    TestPair strangers;
    const std::vector<std::pair<std::string, RelayFailure>> rows{
        {pair.fromMac(), RelayFailure::notAuthenticated},
        {"nonsense", RelayFailure::malformed},
        {std::string(17 * kibibyte, ' '), RelayFailure::tooLarge},
    };
    for (const auto& [frame, code] : rows) {
        DeviceSocket socket{relay.port()};
        socket.read();
        socket.write(frame);
        expectEnded(socket, code);
    }
    DeviceSocket stranger{relay.port()};
    stranger.authenticate(strangers, strangers.mac);
    expectEnded(stranger, RelayFailure::unknownPair);
}

TEST(RelayServer, RefusesADeviceOfAnotherMajorVersion) {
    RunningRelay relay;
    const auto pair = pairAt(relay.port());
    for (const char* target : {"/v1/ws", "/v1/ws?v=2.0", "/v1/ws?w=1.4&v=0.9"}) {
        DeviceSocket socket{relay.port(), false, target};
        socket.authenticate(pair, pair.mac);
        expectEnded(socket, RelayFailure::protocolMismatch);
    }
    DeviceSocket newer{relay.port(), false, "/v1/ws?x=1&v=1.9"};
    newer.logIn(pair, pair.mac, false);
}

TEST(RelayServer, ClosesASocketThatDoesNotLogInInTime) {
    auto limits = RunningRelay::quickLimits();
    limits.login = RelayLimits::Time{20};
    RunningRelay relay{limits};
    DeviceSocket socket{relay.port()};
    socket.read();
    expectEnded(socket, RelayFailure::notAuthenticated);
}

TEST(RelayServer, ClosesAConnectionThatSendsNoWholeRequestInTime) {
    auto limits = RunningRelay::quickLimits();
    limits.request = RelayLimits::Time{20};
    RunningRelay relay{limits};
    EXPECT_EQ(exchange(relay.port(), "POST /v1/pair/create HTTP/1.1\r\nHost: lo"), "");
}

TEST(RelayServer, ReplacesAnOlderSocketOfTheSameDevice) {
    Connected both;
    DeviceSocket again{both.relay.port()};
    again.logIn(both.pair, both.pair.phone, true);
    again.write(both.pair.fromPhone());
    EXPECT_EQ(both.phone.read(), std::nullopt);
    EXPECT_EQ(both.phone.closeCode(), 1000);
    EXPECT_EQ(both.mac.read(), online);
    EXPECT_EQ(both.mac.read(), both.pair.fromPhone());
    both.mac.write(both.pair.fromMac());
    EXPECT_EQ(again.read(), both.pair.fromMac());
}

TEST(RelayServer, TellsOfAPeerThatVanishesWithoutGoodbye) {
    Connected both;
    {
        DeviceSocket gone = DeviceSocket{both.relay.port()};
    }
    auto phone = std::make_unique<DeviceSocket>(both.relay.port());
    phone->logIn(both.pair, both.pair.phone, true);
    EXPECT_EQ(both.mac.read(), online);
    phone.reset();
    EXPECT_EQ(both.mac.read(), offline);
    both.mac.write(both.pair.fromMac());
    EXPECT_EQ(both.mac.read(), failureFrame(RelayFailure::peerOffline));
    both.mac.write(both.pair.fromMac());
    EXPECT_EQ(both.mac.read(), failureFrame(RelayFailure::peerOffline));
}

TEST(RelayServer, EndsASocketThatForgesASender) {
    Connected both;
    both.mac.write(both.pair.fromPhone());
    expectEnded(both.mac, RelayFailure::malformed);
    EXPECT_EQ(both.phone.read(), offline);
}

TEST(RelayServer, PassesAFrameOfTheLargestSize) {
    Connected both;
    auto largest = both.pair.fromMac();
    largest.resize(4 * mebibyte, ' ');
    std::jthread sender{[&] {
        both.mac.write(largest);
        both.mac.write(both.pair.fromMac());
    }};
    EXPECT_TRUE(both.phone.read() == largest);
}

TEST(RelayServer, PassesOverAFrameThatIsTooLargeAndKeepsTheSocket) {
    Connected both;
    const auto frame = both.pair.fromPhone();
    for (const auto size : {4 * mebibyte + 1, 32 * mebibyte}) {
        both.phone.write(std::string(size, ' '));
        ASSERT_EQ(both.phone.read(), failureFrame(RelayFailure::tooLarge));
        both.phone.write(frame);
        ASSERT_EQ(both.mac.read(), frame) << "nothing came before it";
    }
}

TEST(RelayServer, EndsASocketWhoseFrameGoesOnAndOn) {
    Connected both;
    both.mac.tryToWrite(std::string(32 * mebibyte + 1, ' '));
    // Were the socket kept, the phone would get this.
    both.mac.tryToWrite(both.pair.fromMac());
    ASSERT_EQ(both.phone.read(), offline);
    expectEnded(both.mac, RelayFailure::tooLarge);
}

TEST(RelayServer, PingsSilentDevicesAndKeepsThoseThatAnswer) {
    auto limits = RunningRelay::quickLimits();
    limits.pingAfter = RelayLimits::Time{50};
    limits.silence = RelayLimits::Time{1000};
    limits.login = RelayLimits::Time{1500};
    Connected both{limits};
    {
        std::jthread macReader{[&] { EXPECT_EQ(both.mac.read(), std::nullopt); }};
        std::jthread phoneReader{[&] { EXPECT_EQ(both.phone.read(), std::nullopt); }};
        DeviceSocket idle{both.relay.port()};
        idle.read();
        expectEnded(idle, RelayFailure::notAuthenticated);
        both.relay.stop();
    }
    for (const auto* socket : {&both.mac, &both.phone}) {
        EXPECT_EQ(socket->closeCode(), 1001) << "they lived longer than a silent device may";
        EXPECT_GT(socket->pings(), 1U);
    }
}

TEST(RelayServer, DropsADeviceThatAnswersNoPing) {
    const std::vector<std::string> expected{encode(RelayMessage{RelayMessage::Authenticated{true}}), offline};
    // A busy computer may be late with the answers of the mac too. Then both have more time.
    RelayLimits::Time silence{300};
    auto heard = heardBesideASilentPhone(silence);
    while (heard != expected && silence < std::chrono::seconds{15})
        heard = heardBesideASilentPhone(silence *= 4);
    EXPECT_EQ(heard, expected);
}

TEST(RelayServer, EndsBothSocketsOfARevokedPairForGood) {
    Connected both;
    const auto body = both.pair.revoke(both.pair.mac, both.pair.phone.deviceID(), today());
    EXPECT_EQ(post(both.relay.port(), "/v1/device/revoke", body).status, 204U);
    expectEnded(both.phone, RelayFailure::revoked);
    expectEnded(both.mac, RelayFailure::revoked);
    DeviceSocket again{both.relay.port()};
    again.authenticate(both.pair, both.pair.phone);
    expectEnded(again, RelayFailure::revoked);
}

TEST(RelayServer, KnowsItsPairsAfterARestart) {
    TemporaryFolder folder;
    const auto file = folder.path() / "relay.db";
    const auto limits = RunningRelay::quickLimits();
    const auto open = [&] { return PairStore::open(file).value(); };
    std::optional<TestPair> pair;
    {
        RunningRelay relay{limits, open()};
        pair.emplace(pairAt(relay.port()));
    }
    RunningRelay relay{limits, open()};
    DeviceSocket mac{relay.port()};
    mac.logIn(*pair, pair->mac, false);
}

TEST(RelayServer, ClosesItsSocketsWhenItStops) {
    Connected both;
    DeviceSocket newcomer{both.relay.port()};
    newcomer.read();
    both.relay.stop();
    for (auto* socket : {&both.mac, &both.phone, &newcomer}) {
        while (socket->read()) {
        }
        EXPECT_EQ(socket->closeCode(), 1001);
    }
}

TEST(RelayServer, AnswersEveryWrongRequestWithAStatusAndAReason) {
    RunningRelay relay;
    const std::string longBody(65 * kibibyte, ' ');
    const std::vector<std::pair<std::string, CallRefusal>> rows{
        {request("GET /v1/pair/create", ""), CallRefusal::wrongMethod},
        {request("PUT /v1/device/revoke", ""), CallRefusal::wrongMethod},
        {request("GET /", ""), CallRefusal::unknownCall},
        {request("POST /v1/pair/create/", jsonType, "{}"), CallRefusal::unknownCall},
        {request("GET /v1/ws?v=1.4", ""), CallRefusal::notSocket},
        {request("POST /v1/pair/join", "", "{}"), CallRefusal::wrongContentType},
        {request("POST /v1/pair/join", "Content-Type: application/jsonx\r\n", "{}"),
         CallRefusal::wrongContentType},
        {request("POST /v1/pair/join?x=1", "Content-Type: Application/JSON; charset=utf-8\r\n", "{}"),
         CallRefusal::unreadable},
        {request("POST /v1/pair/join", jsonType, longBody), CallRefusal::tooLarge},
        {request("POST /v1/pair/join", "X: " + longBody + "\r\n"), CallRefusal::tooLarge},
        {"nonsense\r\n\r\n", CallRefusal::unreadable},
    };
    for (const auto& [bytes, cause] : rows) {
        const auto answer = exchange(relay.port(), bytes);
        EXPECT_THAT(answer, testing::StartsWith("HTTP/1.1 " + std::to_string(refusal(cause).status)))
            << bytes.substr(0, 60);
        EXPECT_THAT(answer, testing::EndsWith(refusal(cause).body)) << bytes.substr(0, 60);
    }
}

TEST(RelayServer, ClosesConnectionsBeyondItsLimit) {
    auto limits = RunningRelay::quickLimits();
    limits.connections = 1;
    RunningRelay relay{limits};
    const auto pair = pairAt(relay.port());
    DeviceSocket only{relay.port()};
    only.logIn(pair, pair.mac, false);
    EXPECT_EQ(exchange(relay.port(), request("GET /", "")), "");
}

TEST(RelayServer, RefusesAPortInUseAndFilesItCannotUse) {
    RunningRelay relay;
    const auto create = [](const RelayOptions& options) {
        const auto server =
            RelayServer::create(options, RelayLimits{}, RunningRelay::memoryStore(), [](std::string_view) {});
        return server ? "created" : server.error().popis().czech();
    };
    RelayOptions options;
    options.port = std::to_string(relay.port());
    EXPECT_EQ(create(options),
              "cannot listen on 127.0.0.1 port " + options.port + ": Address already in use");
    options.port = "0";
    options.tls = RelayOptions::Tls{"/missing.pem", "/missing.pem"};
    EXPECT_THAT(create(options), testing::StartsWith("cannot use the certificate /missing.pem: "));
}
