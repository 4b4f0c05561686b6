#include "tests/relay/LoggedInPair.h"

#include <gtest/gtest.h>

#include <memory>
#include <string>

using namespace morvex;

namespace {

constexpr bool overTls = true;

std::string request(std::string_view body) {
    return "POST /v1/pair/create HTTP/1.1\r\nHost: localhost\r\nContent-Type: "
           "application/json\r\nContent-Length: " +
           std::to_string(body.size()) + "\r\n\r\n" + std::string{body};
}

struct TlsStream : testing::Test {
    TlsRelay relay;
    TestPair pair;

    void expectServed(TlsClient& client) { EXPECT_THAT(client.read(), testing::StartsWith("HTTP/1.1 200 ")); }

    void expectItServesOthers() {
        EXPECT_EQ(post(relay.port(), "/v1/pair/create", TestPair::create(pair.mac), overTls).status, 200U);
    }
};

} // namespace

TEST_F(TlsStream, EndsAnAnswerWithAFarewell) {
    TlsClient client(relay.port());
    ASSERT_TRUE(client.handshake());
    client.write(request(TestPair::create(pair.mac)));
    expectServed(client);
    EXPECT_EQ(client.end(), boost::asio::error::eof);
}

TEST_F(TlsStream, ReadsARequestOfOneByteARecord) {
    TlsClient client(relay.port());
    ASSERT_TRUE(client.handshake());
    for (const char byte : request(TestPair::create(pair.mac))) ASSERT_TRUE(client.write({&byte, 1}));
    expectServed(client);
}

TEST_F(TlsStream, AnswersAClientThatHasSaidItsFarewell) {
    TlsClient client(relay.port());
    ASSERT_TRUE(client.handshake());
    client.write(request(TestPair::create(pair.mac)));
    SSL_shutdown(client.ssl());
    client.socket().shutdown(boost::asio::ip::tcp::socket::shutdown_send);
    expectServed(client);
}

TEST_F(TlsStream, BearsNewKeysWithoutEnd) {
    TlsClient client(relay.port(),
                     [](SSL_CTX* context) { SSL_CTX_set_min_proto_version(context, TLS1_3_VERSION); });
    ASSERT_TRUE(client.handshake());
    for (int round = 0; round < 3000; ++round) {
        ASSERT_EQ(SSL_key_update(client.ssl(), SSL_KEY_UPDATE_NOT_REQUESTED), 1);
        ASSERT_TRUE(client.handshake());
    }
    for (int round = 0; round < 100; ++round) {
        ASSERT_EQ(SSL_key_update(client.ssl(), SSL_KEY_UPDATE_REQUESTED), 1);
        ASSERT_TRUE(client.handshake());
    }
    expectItServesOthers();
    client.write(request(TestPair::create(pair.mac)));
    expectServed(client);
}

TEST_F(TlsStream, EndsWhatIsNoHandshake) {
    const std::string plain = "GET / HTTP/1.1\r\nHost: localhost\r\n\r\n";
    EXPECT_THAT(exchange(relay.port(), plain), testing::Not(testing::HasSubstr("HTTP/1.1")));
    const std::string tooLong{"\x16\x03\x01\xff\xff", 5};
    EXPECT_LT(exchange(relay.port(), tooLong + std::string(70'000, 'x')).size(), 20U);
    expectItServesOthers();
}

TEST(TlsStreamLimits, EndsAHandshakeThatDoesNotEndItself) {
    auto limits = RunningRelay::quickLimits();
    limits.request = RelayLimits::Time{20};
    TlsRelay relay{limits};
    EXPECT_EQ(exchange(relay.port(), ""), "");
    EXPECT_EQ(exchange(relay.port(), std::string{"\x16\x03\x01\x02", 4}), "");
    TlsClient silent(relay.port());
    silent.handshake();
    EXPECT_EQ(silent.read(), "");
}

TEST(TlsSockets, NoticePeersThatAreCutWithoutAFarewell) {
    LoggedInPair<TlsRelay> both;
    for (const bool isReset : {false, true}) {
        auto phone = std::make_unique<DeviceSocket>(both.relay.port(), overTls);
        phone->logIn(both.pair, both.pair.phone, true);
        EXPECT_EQ(both.mac.read(), online);
        if (isReset) phone->resetOnEnd();
        phone.reset();
        EXPECT_EQ(both.mac.read(), offline);
    }
}

TEST(TlsSockets, EndWithTheFarewellsOfWebSocketAndTls) {
    RelayLimits limits = RunningRelay::quickLimits();
    limits.login = RelayLimits::Time{20};
    TlsRelay relay{limits};
    TlsClient client(relay.port());
    ASSERT_TRUE(client.handshake());
    client.write(
        "GET /v1/ws?v=1.4 HTTP/1.1\r\nHost: localhost\r\nConnection: Upgrade\r\nUpgrade: websocket\r\n"
        "Sec-WebSocket-Version: 13\r\nSec-WebSocket-Key: AAAAAAAAAAAAAAAAAAAAAA==\r\n\r\n");
    // The relay gives up the login with 1008; this is the client's answer, masked with zeros.
    client.write({"\x88\x82\x00\x00\x00\x00\x03\xf0", 8});
    const auto heard = client.read();
    EXPECT_THAT(heard, testing::EndsWith(std::string{"\x88\x02\x03\xf0", 4}));
    EXPECT_EQ(client.end(), boost::asio::error::eof);
}
